#include "deck/window_place.h"
#include "deck_harness.h"

#include <gmock/gmock.h>

namespace tonquay::deck {
namespace {

using controls::MouseButton;
using testing::IsEmpty;

TEST_F(Deck, startTakesOverTheDiscAndIsReadyToRip)
{
    handOver();
    startUp.run(L"  ");
    EXPECT_EQ(state.folders.appFolder, L"C:\\CDTONQUAY") << "the installation's folder";
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\riptype.ini"), "\"0\"\r\n");
    EXPECT_EQ(main.Label12.caption.get(), L"Ann Lee - First Light");
    EXPECT_TRUE(main.Label6[state::genreLabel].visible);
    EXPECT_FALSE(main.Label6[state::yearLabel].visible) << "no year is known";
    EXPECT_FALSE(host.files.fileExists(L"C:\\CDTONQUAY\\audiocd.dat")) << "used once";
    ASSERT_EQ(main.list1.rowCount(), 3);
    EXPECT_EQ(main.list1.row(1), L"Track 02\t0:30\t      5.1\t           Noon");
    EXPECT_EQ(main.list1.selectedCount(), 3);
    EXPECT_TRUE(main.Timer1.enabled());
    EXPECT_EQ(state.settings.outputFolder, L"C:\\CDTONQUAY\\datacd");
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
}

TEST_F(Deck, startWithNothingThereComesUpWithDefaults)
{
    host.engine.drives.clear();
    host.files.discTracks.clear();
    startUp.run(L"Z:\\no\\such");
    EXPECT_EQ(state.folders.appFolder, L"Z:\\no\\such") << "taken as it stands";
    EXPECT_EQ(main.list1.rowCount(), 0);
    EXPECT_FALSE(main.Timer1.enabled());
    EXPECT_EQ(state.settings.ripMethod, 4);
    EXPECT_EQ(state.disc.discArtist, L"Unknown Artist");
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());

    host.system.install = L"";
    EXPECT_THROW(startUp.run(L""), test::ProgramEnded);
}

TEST_F(Deck, shortAlbumlessCyrillicAndEmptyNamesOnTheDisplay)
{
    host.files.put(L"C:\\CDTONQUAY\\audiocd.dat", "\"Кино\",\"\",1,\"Ночь\"");
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_EQ(main.Label12.caption.get(), L"Кино");
    EXPECT_EQ(main.Label13.fontName.get(), L"ER Kurier 1251");
    EXPECT_EQ(main.list1.fontName.get(), L"ER Kurier 1251");
}

TEST_F(Deck, masterFileDecidesThePath)
{
    host.files.put(L"C:\\CDTONQUAY\\riptype.ini", "\"1\"\r\n");
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"D\",\"C:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",4\r\n");
    host.acd.drives = {{L"D", {61000, 62000}}};
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_EQ(state.path.ripEngineMode, 1) << "whatever the other file says";
    EXPECT_FALSE(main.SSPanel1.visible);
    EXPECT_FALSE(main.lblTrackTime.visible);
    EXPECT_EQ(main.list1.rowCount(), 2);
    EXPECT_FALSE(forms.loaded<state::Cdrip1Controls>());
}

TEST_F(Deck, driveThatTheControlCannotReadFallsBackToTheEngineForGood)
{
    host.files.put(L"C:\\CDTONQUAY\\riptype.ini", "\"1\"\r\n");
    host.acd.probeFails = true;
    startUp.run(L"C:\\CDTONQUAY");
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].icon, platform::Dialogs::Icon::stop);
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\riptype.ini"), "\"0\"\r\n");
    EXPECT_TRUE(main.SSPanel1.visible);
    EXPECT_TRUE(forms.loaded<state::Cdrip1Controls>());
}

TEST_F(Deck, firstRunWithoutDriveLeadsToSetup)
{
    host.files.put(L"C:\\CDTONQUAY\\riptype.ini", "\"1\"\r\n");
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"\",\"C:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",0\r\n");
    host.acd.drives.clear();
    for (int i = 0; i < 5; ++i)
        forms.controlsOf<state::CdriptabControls>().List4.add(L"method");
    startUp.run(L"C:\\CDTONQUAY");
    ASSERT_EQ(host.dialogs.boxes.size(), 2U);
    EXPECT_EQ(host.dialogs.boxes[0].title, L"CD-Tonquay Setup Wizard");
    EXPECT_EQ(host.dialogs.boxes[1].text, L"Please select a CD/DVD Drive in the CD Ripper Setup Section!");
    EXPECT_EQ(state.settings.ripMethod, 2);
    EXPECT_EQ(forms.cdriptab().List4.index(), 2);
    EXPECT_EQ(forms.cdriptab().form.state(), controls::Form::State::shown);
    EXPECT_FALSE(main.form.enabled);
}

TEST_F(Deck, themeColoursTheCaptionsAlsoWithoutFonts)
{
    host.files.put(L"C:\\CDTONQUAY\\TQWIN3.INI", "\"\",0,0,0,0,7\r\n\"Mono\",12,0,0,0,9");
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_EQ(main.Label12.colour.get(), 0) << "a record without a font leaves the design's";
    EXPECT_EQ(main.Label6[state::statusLabel].colour.get(), 9);
    host.files.put(L"C:\\CDTONQUAY\\TQWIN4.INI", "1,2,3,4,5,6,7,8,9,10,11,12,13,0,15,16,1,111,222");
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_EQ(main.Label12.colour.get(), 111);
    EXPECT_EQ(main.Label6[state::statusLabel].colour.get(), 111);
    EXPECT_EQ(main.Label8.colour.get(), 111);
}

TEST_F(Deck, doubtfullyShortTracksAreReadOnceMore)
{
    host.files.put(L"C:\\CDTONQUAY\\riptype.ini", "\"1\"\r\n");
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"D\",\"C:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",0\r\n");
    host.acd.drives = {{L"D", {9000, 9000}}};
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_EQ(testing::Value(host.acd.calls, testing::Contains("SelectDrive(1)").Times(3)), true);
    EXPECT_EQ(main.list1.rowCount(), 2);
}

TEST_F(Deck, playersTrackListSelectsAndIsDeleted)
{
    handOver();
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini",
                   "\"D\",\"C:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",4,\"2\",0,0,1,0,0,0,0\r\n");
    host.files.put(L"C:\\CDTONQUAY\\pgmtrks.tmp", "3\r\n0\r\n-1\r\n99\r\nword\r\n1");
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_TRUE(main.list1.isSelected(0));
    EXPECT_FALSE(main.list1.isSelected(1));
    EXPECT_TRUE(main.list1.isSelected(2));
    EXPECT_FALSE(host.files.fileExists(L"C:\\CDTONQUAY\\pgmtrks.tmp"));
}

TEST(WindowPlace, isMovedBackOntoTheScreen)
{
    const platform::SystemInfo::Screen screen{15000, 12000, 15};
    controls::Form form;
    form.width = 9000;
    form.height = 6000;
    struct Case {
        std::int32_t left, top, clampedLeft, clampedTop;
    };
    const Case cases[] = {
        {-1, -5000, 0, 0},
        {5600, 5800, 5600, 5800},
        {5601, 5801, 6000, 6000}, // the margin counts in the test only
        {2147483647, 2147483647, 6000, 6000},
    };
    for (const Case& c : cases) {
        state::WindowState window;
        window.savedLeft = c.left;
        window.savedTop = c.top;
        clampPlace(window, form, screen);
        EXPECT_EQ(window.savedLeft, c.clampedLeft) << c.left;
        EXPECT_EQ(window.savedTop, c.clampedTop) << c.top;
    }
}

TEST_F(Deck, windowKeepsItsPlaceUnlessTheSuiteSaysOtherwise)
{
    host.files.put(L"C:\\CDTONQUAY\\RIPPOS.DAT", "300,450\r\n");
    startUp.run(L"C:\\CDTONQUAY");
    EXPECT_EQ(main.form.left.get(), 300);
    EXPECT_EQ(main.form.top.get(), 450);
    main.form.left = -20;
    EXPECT_THROW(
        {
            main.Label28.mouseDown(MouseButton::left);
            main.Label28.mouseUp(MouseButton::left);
        },
        test::ProgramEnded);
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\RIPPOS.DAT"), "0,450\r\n");
}

TEST_F(Deck, restartSavesNothingAndStopsThePreview)
{
    startUp.run(L"C:\\CDTONQUAY");
    forms.cdrip1().lstTracks.setIndex(0);
    state.flags.previewActive = 1;
    EXPECT_THROW(keys.press(state::refreshKey), test::ProgramEnded);
    ASSERT_EQ(host.processes.started.size(), 1U);
    EXPECT_EQ(host.processes.started[0].command, L"C:\\CDTONQUAY\\tqlaunch.exe RUNRIPPER");
    EXPECT_EQ(host.engine.BASS_ChannelIsActive(state.engine.audioStream), platform::AudioEngine::stopped);
    EXPECT_FALSE(host.files.fileExists(L"C:\\CDTONQUAY\\RIPPOS.DAT"));
}

TEST_F(Deck, commandKeysAndTheirCaptionsDoTheSame)
{
    handOver();
    startUp.run(L"C:\\CDTONQUAY");
    main.image10[state::clearAllKey].mouseUp(MouseButton::left);
    EXPECT_EQ(main.list1.selectedCount(), 0);
    main.Label10[state::selectAllKey].mouseUp(MouseButton::left);
    EXPECT_EQ(main.list1.selectedCount(), 3);
    main.image10[state::partialKey].mouseUp(MouseButton::left);
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].icon, platform::Dialogs::Icon::information);
    main.Label10[state::tagUtilityKey].mouseUp(MouseButton::left);
    EXPECT_EQ(forms.cdriptab().tab.get(), 2);
    EXPECT_FALSE(main.form.enabled);
}

}
}
