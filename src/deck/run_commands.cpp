#include "deck/run_commands.h"

#include "disc/disc_table.h"
#include "platform/acd_control.h"

namespace tonquay::deck {

RunCommands::RunCommands(state::AppState& state, state::Forms& forms, rip::RipDriver& driver, Preview& preview,
                         platform::Platform& platform)
    : state_(state),
      forms_(forms),
      main_(forms.ripdeck()),
      driver_(driver),
      preview_(preview),
      platform_(platform)
{
    main_.icntla[state::startButton].mouseUp = [this](controls::MouseButton) {
        main_.icntla[state::startButton].picture = state_.flags.ripBusy == 1 ? state::runningLook : state::idleLook;
        start();
    };
    main_.icntla[state::stopButton].mouseUp = [this](controls::MouseButton) {
        main_.icntla[state::stopButton].picture = state::idleLook;
        stop();
    };
}

void RunCommands::start()
{
    if (main_.list1.selectedCount() == 0 || state_.flags.ripBusy == 1)
        return;
    // With the audio engine the first track's extraction takes the sound away; the preview's keys and lights follow.
    if (state_.flags.previewActive == 1) {
        if (state_.path.ripEngineMode == 1)
            preview_.endPreview();
        else
            preview_.stop();
    }
    main_.icntla[state::startButton].picture = state::runningLook;
    state_.flags.encodeOnly = 0;
    const auto showBusy = [this](bool busy) {
        main_.SliderVolume.busyPointer = busy;
        main_.SliderBalance.busyPointer = busy;
        main_.list1.busyPointer = busy;
    };
    showBusy(true);
    driver_.recstart();
    showBusy(false);
}

void RunCommands::stop()
{
    preview_.stop();
    main_.Label8.caption = L"0";
    main_.Label13.caption = L"";
    // Only a run takes the request; one that is left over would stop the next run after its first track.
    if (state_.flags.ripBusy == 1)
        state_.flags.stopRequested = 1;
    if (state_.settings.ripMethod == state::analogMethod && forms_.loaded<state::CdrecaltControls>())
        forms_.cdrecalt().cmdCancel.click();
    if (state_.path.ripEngineMode == 1)
        platform_.acd.AbortRip();
    main_.list1.deselectAll();
}

}
