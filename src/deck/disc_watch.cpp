#include "deck/disc_watch.h"

#include "disc/disc_table.h"
#include "platform/file_system.h"

namespace tonquay::deck {

namespace {

constexpr controls::Colour red = 255;

}

DiscWatch::DiscWatch(state::AppState& state, state::RipdeckControls& ripdeck, ProgramEnd& programEnd,
                     platform::Platform& platform)
    : state_(state),
      main_(ripdeck),
      programEnd_(programEnd),
      platform_(platform)
{
    main_.Timer1.tick = [this] { tick(); };
}

void DiscWatch::tick()
{
    if (state_.flags.encodeBusy == 1 || state_.flags.ripBusy == 1)
        blink();
    if (!discIsIn())
        emptyWindow();
    else if (state_.window.discWasRemoved == 1)
        programEnd_.restartThroughLauncher();
}

void DiscWatch::blink()
{
    const state::Theme& theme = state_.theme;
    controls::Property<controls::Colour>& colour = main_.Label6[state::statusLabel].colour;
    if (theme.useThemeColours == 1)
        colour = colour.get() == theme.themeColourA ? theme.themeColourB : theme.themeColourA;
    else
        colour = colour.get() == red ? 0 : red;
    if (state_.flags.encodeBusy == 1)
        main_.lblTrackTime.caption = L"0:00";
}

bool DiscWatch::discIsIn()
{
    return platform_.files.fileExists(disc::firstTrackName(state_.disc.handoverDriveLetter));
}

/// At every tick for as long as the disc is away, so that nothing that a run still shows stays.
void DiscWatch::emptyWindow()
{
    state_.window.discWasRemoved = 1;
    main_.icntla[state::stopButton].mouseUp(controls::MouseButton::left);
    main_.list1.clear();
    main_.Label8.caption = L"0";
    main_.lblTrackTime.caption = L"0:00";
    main_.lblTrackTot.caption = L"0:00";
    main_.Label12.caption = L"";
    main_.Label13.caption = L"";
    for (const state::StatusLabel label :
         {state::ripperCaption, state::yearLabel, state::genreLabel, state::commentLabel})
        main_.Label6[label].caption = L"";
    main_.Label6[state::discCaption].colour = state_.theme.useThemeColours == 1 ? state_.theme.themeColourA : red;
}

}
