#include "deck/program_end.h"

#include "deck/window_place.h"
#include "platform/audio_engine.h"
#include "platform/diagnostics.h"
#include "platform/processes.h"
#include "state/settings_text.h"

namespace tonquay::deck {

ProgramEnd::ProgramEnd(state::AppState& state, state::RipdeckControls& ripdeck, platform::Platform& platform)
    : state_(state),
      platform_(platform)
{
    ripdeck.Label28.mouseDown = [this, &ripdeck](controls::MouseButton) { saveposn(state_, ripdeck, platform_); };
    ripdeck.Label28.mouseUp = [this](controls::MouseButton) {
        stopPreview();
        platform_.processes.endProgram();
    };
}

void ProgramEnd::stopPreview()
{
    if (state_.path.ripEngineMode == 0 && state_.flags.previewActive == 1)
        platform_.engine.BASS_ChannelStop(state_.engine.audioStream);
}

void ProgramEnd::restartThroughLauncher()
{
    const std::wstring command = state::inFolder(state_.folders.appFolder, L"tqlaunch.exe RUNRIPPER");
    passOver(platform_.log, platform_.processes.start(command, platform::Processes::WindowStyle::normal),
             "Start the launcher");
    stopPreview();
    platform_.processes.endProgram();
}

}
