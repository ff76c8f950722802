#include "deck_harness.h"

#include <gmock/gmock.h>

namespace tonquay::deck {
namespace {

constexpr controls::Colour red = 255;
constexpr controls::Colour themeA = 0x112233;
constexpr controls::Colour themeB = 0x445566;

struct Watch : Deck {
    Watch()
    {
        handOver();
        startUp.run(L"C:\\CDTONQUAY");
    }

    void tick() { main.Timer1.tick(); }
    controls::Colour statusColour() const { return forms_().Label6[state::statusLabel].colour; }

private:
    const state::RipdeckControls& forms_() const { return main; }
};

TEST_F(Watch, blinksTheStatusWhileARunOrAnEncoderIsAtWork)
{
    struct Case {
        const char* what;
        std::int16_t ripBusy;
        std::int16_t encodeBusy;
        std::int16_t theme;
        std::vector<controls::Colour> colours;
        const wchar_t* time;
    };
    const Case cases[] = {
        {"idle", 0, 0, 0, {7, 7}, L"1:23"},
        {"a run", 1, 0, 0, {red, 0, red}, L"1:23"},
        {"an encoder", 0, 1, 0, {red, 0}, L"0:00"},
        {"both, with a theme", 1, 1, 1, {themeA, themeB, themeA}, L"0:00"},
    };
    state.theme.themeColourA = themeA;
    state.theme.themeColourB = themeB;
    for (const Case& c : cases) {
        state.flags.ripBusy = c.ripBusy;
        state.flags.encodeBusy = c.encodeBusy;
        state.theme.useThemeColours = c.theme;
        main.Label6[state::statusLabel].colour = 7;
        main.lblTrackTime.caption = L"1:23";
        for (const controls::Colour colour : c.colours) {
            tick();
            EXPECT_EQ(statusColour(), colour) << c.what;
        }
        EXPECT_EQ(main.lblTrackTime.caption.get(), c.time) << c.what;
    }
}

TEST_F(Watch, discThatGoesEmptiesTheWindowAtEveryTick)
{
    state.flags.ripBusy = 1;
    host.files.discTracks[L'D'] = 0;
    for (int i = 0; i < 2; ++i) {
        main.Label8.caption = L"2";
        main.Label13.caption = L"Noon";
        tick();
        EXPECT_EQ(main.Label8.caption.get(), L"0");
        EXPECT_EQ(main.Label13.caption.get(), L"");
    }
    EXPECT_EQ(state.window.discWasRemoved, 1);
    EXPECT_EQ(state.flags.stopRequested, 1) << "Stop was given";
    EXPECT_EQ(main.list1.rowCount(), 0);
    EXPECT_EQ(main.Label12.caption.get(), L"");
    EXPECT_EQ(main.lblTrackTot.caption.get(), L"0:00");
    for (const state::StatusLabel label :
         {state::ripperCaption, state::yearLabel, state::genreLabel, state::commentLabel})
        EXPECT_EQ(main.Label6[label].caption.get(), L"");
    EXPECT_EQ(main.Label6[state::discCaption].colour.get(), red);
    EXPECT_THAT(host.processes.started, testing::IsEmpty());

    state.theme.useThemeColours = 1;
    state.theme.themeColourA = themeA;
    tick();
    EXPECT_EQ(main.Label6[state::discCaption].colour.get(), themeA);
}

TEST_F(Watch, discThatComesBackRestartsThroughTheLauncher)
{
    tick();
    EXPECT_THAT(host.processes.started, testing::IsEmpty()) << "the disc was never gone";
    host.files.discTracks[L'D'] = 0;
    tick();
    host.files.discTracks[L'D'] = 12;
    EXPECT_THROW(tick(), test::ProgramEnded);
    ASSERT_EQ(host.processes.started.size(), 1U);
    EXPECT_EQ(host.processes.started[0].command, L"C:\\CDTONQUAY\\tqlaunch.exe RUNRIPPER");
    EXPECT_FALSE(host.files.fileExists(L"C:\\CDTONQUAY\\RIPPOS.DAT")) << "nothing is saved";
}

TEST_F(Watch, looksAtTheDriveOfTheHandOverOnly)
{
    state.settings.driveLetter = L"E";
    host.files.discTracks[L'E'] = 0;
    tick();
    EXPECT_EQ(state.window.discWasRemoved, 0);
}

}
}
