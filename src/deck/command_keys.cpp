#include "deck/command_keys.h"

#include "disc/disc_table.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/processes.h"
#include "state/settings_text.h"

namespace tonquay::deck {

namespace {

/// A dialog that a command opens loads afresh.
void showAfresh(controls::Form& form)
{
    form.unload();
    form.show();
}

}

CommandKeys::CommandKeys(state::AppState& state, state::Forms& forms, ProgramEnd& programEnd,
                         platform::Platform& platform)
    : state_(state),
      forms_(forms),
      main_(forms.ripdeck()),
      programEnd_(programEnd),
      platform_(platform)
{
    for (std::size_t i = 0; i < main_.image10.size(); ++i) {
        const auto command = [this, key = static_cast<state::CommandKey>(i)](controls::MouseButton) {
            main_.image10[key].picture = state::idleLook;
            press(key);
        };
        main_.image10[i].mouseUp = command;
        main_.Label10[i].mouseUp = command;
    }
}

void CommandKeys::press(state::CommandKey key)
{
    switch (key) {
    case state::playerKey: goToPlayer(); break;
    case state::setupKey: openSetup(state::settingsTab); break;
    case state::tagUtilityKey: openSetup(state::tagUtilityTab); break;
    case state::partialKey: openPartialRip(); break;
    case state::refreshKey: programEnd_.restartThroughLauncher(); break;
    case state::selectAllKey: disc::selalltrks(main_.list1); break;
    case state::clearAllKey: main_.list1.deselectAll(); break;
    case state::discTagsKey: openDiscTags(); break;
    case state::ripKey: main_.icntla[state::startButton].mouseUp(controls::MouseButton::left); break;
    }
}

void CommandKeys::goToPlayer()
{
    const std::wstring command = state::inFolder(state_.folders.appFolder, L"tqlaunch.exe");
    passOver(platform_.log, platform_.processes.start(command, platform::Processes::WindowStyle::normal),
             "Start the player");
    main_.Label28.click();
}

void CommandKeys::openSetup(std::int32_t tab)
{
    forms_.controlsOf<state::CdripbgControls>().form.show();
    showAfresh(forms_.controlsOf<state::CdriptabControls>().form);
    forms_.cdriptab().tab = tab;
    main_.form.enabled = false;
}

void CommandKeys::openPartialRip()
{
    if (state_.settings.ripMethod >= state::analogMethod || state_.path.ripEngineMode == 0) {
        platform_.dialogs.messageBox(L"CD-Tonquay",
                                     L"Partial track rip option not available when using Advanced Digital rip mode",
                                     platform::Dialogs::Icon::information);
        return;
    }
    showAfresh(forms_.controlsOf<state::TrkcustControls>().form);
}

void CommandKeys::openDiscTags()
{
    state::showTagger(forms_.controlsOf<state::Id3autoControls>(), state_.flags, state::enterDiscTags);
}

}
