#include "deck/popup_menu.h"

#include <array>
#include <utility>

namespace tonquay::deck {

using controls::MouseButton;

namespace {

void pressAndRelease(const controls::Image& image)
{
    image.mouseDown(MouseButton::left);
    image.mouseUp(MouseButton::left);
}

}

PopupMenu::PopupMenu(state::AppState& state, state::Forms& forms, Commands commands)
    : state_(state),
      main_(forms.ripdeck()),
      popa_(forms.controlsOf<state::PopaControls>()),
      commands_(commands)
{
    popa_.form.onLoad = [this] {
        // It would turn the run that is on into one that extracts nothing.
        popa_.pop[state::encodeEntry].enabled = state_.flags.ripBusy != 1;
        popa_.popopt.opened.tell();
    };
    popa_.popopt.closed = [this] { popa_.form.unload(); };
    wireKeys();
    wireOwnCommands();
}

void PopupMenu::wireKeys()
{
    constexpr std::array<std::pair<state::PopupEntry, state::TransportKey>, 7> transport{{
        {state::previousEntry, state::previousButton},
        {state::nextEntry, state::nextButton},
        {state::playEntry, state::playButton},
        {state::pauseEntry, state::pauseButton},
        {state::stopEntry, state::stopButton},
        {state::ejectEntry, state::ejectButton},
        {state::ripEntry, state::startButton},
    }};
    constexpr std::array<std::pair<state::PopupEntry, state::CommandKey>, 7> commands{{
        {state::playerEntry, state::playerKey},
        {state::setupEntry, state::setupKey},
        {state::tagUtilityEntry, state::tagUtilityKey},
        {state::partialEntry, state::partialKey},
        {state::selectAllEntry, state::selectAllKey},
        {state::clearAllEntry, state::clearAllKey},
        {state::discTagsEntry, state::discTagsKey},
    }};
    for (const auto& [entry, key] : transport)
        popa_.pop[entry].click = [&image = main_.icntla[key]] { pressAndRelease(image); };
    for (const auto& [entry, key] : commands)
        popa_.pop[entry].click = [&image = main_.image10[key]] { pressAndRelease(image); };
    // The key shows as pressed and the mixer does not start.
    popa_.pop[state::mixerEntry].click = [this] { main_.Image15.mouseDown(MouseButton::none); };
}

void PopupMenu::wireOwnCommands()
{
    popa_.refreshcdx.click = [this] { commands_.programEnd.restartThroughLauncher(); };
    popa_.pop[state::convertEntry].click = [this] { commands_.keys.openSetup(state::toWavTab); };
    popa_.pop[state::editTitleEntry].click = [this] { main_.list1.mouseDown(MouseButton::right); };
    popa_.pop[state::saveProgramEntry].click = [this] { commands_.programFiles.savepgm(1); };
    popa_.pop[state::encodeEntry].click = [this] { encodeSelected(); };
    popa_.pop[state::centerEntry].click = [this] { commands_.shell.centre(); };
    popa_.poph.click = [this] { commands_.shell.helpOpen(); };
}

void PopupMenu::encodeSelected()
{
    state_.flags.encodeOnly = 1;
    commands_.driver.recstart();
}

}
