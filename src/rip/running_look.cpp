#include "rip/running_look.h"

#include "state/painting.h"

namespace tonquay::rip {

namespace {

void enableDiscTexts(state::RipdeckControls& ripdeck, bool enabled)
{
    ripdeck.list1.enabled = enabled;
    for (const state::StatusLabel label : {state::yearLabel, state::genreLabel, state::commentLabel})
        ripdeck.Label6[label].enabled = enabled;
}

void showBars(state::RipdeckControls& ripdeck, bool shown)
{
    for (controls::ProgressPanel* panel : {&ripdeck.Totalprogress, &ripdeck.Trackprogress}) {
        panel->bordered = shown;
        panel->visible = shown;
    }
    ripdeck.Label6[state::totalPercentText].visible = shown;
    ripdeck.Label6[state::trackPercentText].visible = shown;
}

}

void showRunningLook(state::RipdeckControls& ripdeck, const state::Theme& theme)
{
    ripdeck.Label6[state::trackProgressCaption].colour = theme.highlight();
    ripdeck.Label6[state::totalProgressCaption].colour = theme.highlight();
    showBars(ripdeck, true);
    enableDiscTexts(ripdeck, false);
}

void showTracksDone(state::RipdeckControls& ripdeck)
{
    ripdeck.Trackprogress.value = std::int16_t{0};
    ripdeck.Totalprogress.value = std::int16_t{0};
    showBars(ripdeck, false);
    ripdeck.Label6[state::trackPercentText].caption = L"0%";
    ripdeck.Label6[state::totalPercentText].caption = L"0%";
    ripdeck.Label8.caption = L"0";
    ripdeck.Label13.caption = L"";
    enableDiscTexts(ripdeck, true);
}

void showIdleLook(state::RipdeckControls& ripdeck, const state::Theme& theme)
{
    for (const state::StatusLabel label :
         {state::trackProgressCaption, state::totalProgressCaption, state::statusLabel})
        ripdeck.Label6[label].colour = theme.normal();
    state::sbarbc(ripdeck, theme);
    ripdeck.Label6[state::statusLabel].caption = L"Recording";
    ripdeck.lblTrackTime.caption = L"0:00";
    ripdeck.icntla[state::playButton].picture = state::idleLook;
    ripdeck.icntla[state::startButton].picture = state::idleLook;
}

}
