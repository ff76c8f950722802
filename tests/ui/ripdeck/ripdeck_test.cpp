#include "desktop_program.h"

#include "support/run_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QListView>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace tonquay::ui {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

TEST_F(DesktopProgram, previewThenStopThenTwoTracksToTaggedMp3)
{
    start(true);
    toggle(1);
    click("Play");
    ASSERT_TRUE(QTest::qWaitFor([] { return named<QProgressBar>("Track Progress").value() > 5; }, 10000));
    EXPECT_EQ(shown("Title in work"), "Noon");
    EXPECT_TRUE(shown("Elapsed time").startsWith("00:0"));
    EXPECT_EQ(shown("Preview"), "PREVIEW: on");
    click("Stop");
    EXPECT_EQ(shown("Preview"), "PREVIEW: off");
    EXPECT_EQ(named<QProgressBar>("Track Progress").value(), 0);

    toggle(1);
    toggle(2);
    click("Rip");
    EXPECT_EQ(files(), (std::set<std::string>{"Noon.mp3", "Dusk.mp3"}));
    const auto tags = test::runProgram({"ffprobe", "-v", "error", "-show_entries", "format=duration:format_tags", "-of",
                                        "default=nw=1", music / "Noon.mp3"})
                          .out;
    for (const char* tag : {"TAG:title=Noon", "TAG:artist=Ann Lee", "TAG:album=First Light", "TAG:track=2",
                            "TAG:genre=Jazz", "TAG:date=2001", "duration=12.0"})
        EXPECT_THAT(tags, HasSubstr(tag));
    EXPECT_TRUE(tracks().hasFocus() || tracks().isEnabled());
    EXPECT_TRUE(tracks().selectionModel()->selectedIndexes().isEmpty()) << "the run takes the selection";
}

TEST_F(DesktopProgram, everyKeyPressedDuringARunHarmsNoTrack)
{
    start(false);
    EXPECT_GT(ripAllUnderEveryKey(), 3);
    EXPECT_EQ(files(), (std::set<std::string>{"Dawn.wav", "Noon.wav", "Dusk.wav"}));
    expectExact("Dawn.wav", 0);
    expectExact("Noon.wav", 1);
    expectExact("Dusk.wav", 2);
}

TEST_F(DesktopProgram, everyKeyPressedWhileEncodersWorkHarmsNoTrack)
{
    start(true);
    EXPECT_GT(ripAllUnderEveryKey(), 20);
    EXPECT_EQ(files(), (std::set<std::string>{"Dawn.mp3", "Noon.mp3", "Dusk.mp3"}));
    for (const char* name : {"Dawn", "Noon", "Dusk"})
        EXPECT_THAT(test::runProgram({"ffprobe", "-v", "error", "-show_entries", "format_tags=title",
                                      music / (std::string(name) + ".mp3")})
                        .out,
                    HasSubstr(name));
}

TEST_F(DesktopProgram, stopLeavesTheTrackInHandWhole)
{
    start(false);
    click("All");
    QTimer::singleShot(0, [] { click("Stop"); });
    click("Rip");
    ASSERT_FALSE(files().empty());
    EXPECT_LT(files().size(), 3U);
    expectExact("Dawn.wav", 0);
}

TEST_F(DesktopProgram, aRunSaysWhatBecameOfIt)
{
    start(false);
    const auto rip = [] {
        click("All");
        click("Rip");
        QTest::qWait(600);
        return shown("Result of the run").toStdString();
    };
    EXPECT_EQ(rip(), "3 tracks in " + music.string());
    fs::remove(music / "Noon.wav");
    fs::create_directory(music / "Noon.wav");
    EXPECT_THAT(rip(), testing::AllOf(HasSubstr("Noon.wav"), testing::Not(HasSubstr("more")),
                                      testing::Not(HasSubstr("tracks in"))));
    fs::remove(music / "Noon.wav");
    EXPECT_EQ(rip(), "3 tracks in " + music.string()) << "an old word goes";
    state::RipSettings& settings = ripdeck->program().state().settings;
    settings.ripToWma = 1;
    settings.bitrateIndex = 20;
    EXPECT_THAT(rip(), testing::AllOf(HasSubstr("offers no rate"), HasSubstr("and 2 more")));
    settings.bitrateIndex = 8;
    EXPECT_EQ(rip(), "3 tracks in " + music.string()) << "the next run puts it right";
    EXPECT_TRUE(fs::exists(music / "Noon.WMA"));
}

TEST_F(DesktopProgram, discThatGoesEmptiesTheWindow)
{
    start(false);
    EXPECT_EQ(shown("Disc"), "DISC: on");
    fs::rename(folder.path() / "album.cue", folder.path() / "gone.cue");
    fs::rename(folder.path() / "album.bin", folder.path() / "gone.bin");
    EXPECT_TRUE(QTest::qWaitFor([] { return tracks().model()->rowCount() == 0; }, 8000));
    EXPECT_EQ(shown("Artist and album"), "");
}

/// The dialog that comes up in the middle of a click, filled in by `act`.
void whenDialogOpens(std::function<void(QWidget&)> act)
{
    QTimer::singleShot(0, [act = std::move(act)] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
    });
}

TEST_F(DesktopProgram, everyModeRipsExactFilesUnderEveryKey)
{
    for (const int method : {0, 1, 2}) {
        SCOPED_TRACE(method);
        start(false, method);
        EXPECT_FALSE(named<QWidget>("Elapsed time").isVisible()) << "the control tells no times";
        ripAllUnderEveryKey();
        EXPECT_EQ(files(), (std::set<std::string>{"Dawn.wav", "Noon.wav", "Dusk.wav"}));
        expectExact("Dawn.wav", 0);
        expectExact("Noon.wav", 1);
        expectExact("Dusk.wav", 2);
        ripdeck.reset();
        fs::remove_all(music);
        fs::create_directory(music);
        fs::remove_all(folder.path() / "program");
    }
}

TEST_F(DesktopProgram, previewKeysWorkOnTheControlToo)
{
    start(false, 2);
    toggle(0);
    toggle(0);
    click("Preview Track");
    EXPECT_EQ(shown("Title in work"), "Dawn");
    EXPECT_EQ(shown("Preview"), "PREVIEW: on");
    click("Next track");
    EXPECT_EQ(shown("Title in work"), "Noon");
    click("Next track");
    click("Next track");
    EXPECT_EQ(shown("Title in work"), "Dusk") << "nothing behind the last one";
    click("Previous track");
    EXPECT_EQ(shown("Title in work"), "Noon");
    click("Pause");
    EXPECT_EQ(shown("Preview"), "PAUSE: on");
    click("Play");
    EXPECT_EQ(shown("Preview"), "PREVIEW: on");
    click("Stop");
    EXPECT_EQ(shown("Title in work"), "");
    EXPECT_EQ(shown("Preview"), "PREVIEW: off");
    click("Previous track");
    EXPECT_EQ(shown("Title in work"), "") << "nothing before the first one";
    click("Play");
    EXPECT_EQ(shown("Title in work"), "Noon") << "the row under the cursor";
    click("Stop Preview");
    EXPECT_EQ(shown("Preview"), "PREVIEW: off");
}

TEST_F(DesktopProgram, aNewTitleByRightClickNamesTheFile)
{
    start(false, 2);
    toggle(1);
    whenDialogOpens([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "CD-Tonquay - Edit Track Description");
        QTest::keyClicks(dialog.focusWidget(), "Rain");
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    QTest::mouseClick(tracks().viewport(), Qt::RightButton, {},
                      tracks().visualRect(tracks().model()->index(1, 0)).center());
    EXPECT_EQ(tracks().selectionModel()->selectedIndexes().size(), 1) << "the selection stays";
    click("Rip");
    EXPECT_EQ(files(), (std::set<std::string>{"Rain.wav"}));
    expectExact("Rain.wav", 1);
}

}
}
