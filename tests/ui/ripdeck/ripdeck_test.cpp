#include "ui/ripdeck/ripdeck.h"

#include "support/disc_maker.h"
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

constexpr int sectorsPerSecond = 75;

/// The desktop program on a made disc of three tracks, with a home and a program folder of its own, driven by its
/// widgets alone.
struct DesktopProgram : testing::Test {
    test::DiscFolder folder;
    test::DiscPlan disc{.tracks = {{.sectors = 11 * sectorsPerSecond, .title = "Dawn"},
                                   {.sectors = 12 * sectorsPerSecond, .title = "Noon"},
                                   {.sectors = 13 * sectorsPerSecond, .title = "Dusk"}}};
    fs::path music = folder.path() / "Music";
    std::unique_ptr<Ripdeck> ripdeck;

    DesktopProgram()
    {
        setenv("HOME", folder.path().c_str(), 1);
        for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
            unsetenv(variable);
        setenv("TONQUAY_DISCS", test::makeDisc(folder.path(), disc).c_str(), 1);
        fs::create_directory(music);
    }

    /// `encoded` asks for MP3 files, one at a time. `method` below 4 reads with the drive control.
    void start(bool encoded, int method = 4)
    {
        const fs::path program = folder.path() / "program";
        fs::create_directory(program);
        test::writeFile(program / "riptype.ini", method == 4 ? "\"0\"\r\n" : "\"1\"\r\n");
        const auto lame = test::runProgram({"sh", "-c", "command -v lame"}).out;
        fs::create_symlink(lame.substr(0, lame.find('\n')), program / "lame.exe");
        std::string handOver = "\"Ann Lee\",\"First Light\",3,\"Dawn\",\"Noon\",\"Dusk\"";
        for (int i = 4; i <= 100; ++i)
            handOver += ",\"\"";
        test::writeFile(program / "audiocd.dat", handOver + ",\"at home\",\"Jazz\",\"2001\",\"D\"\r\n");
        std::string output = "C:" + music.string();
        std::ranges::replace(output, '/', '\\');
        // No program file, the whole run in the open, and nothing selected at the start.
        test::writeFile(program / "acdset.ini", "\"D\",\"" + output + "\",0,0,\"\"," + (encoded ? "1,1" : "0,0") +
                                                    ",0,0,1,8,\"\",\"\"," + std::to_string(method) +
                                                    ",\"0\",1,0,0,0,0,0,0\r\n");
        ripdeck = std::make_unique<Ripdeck>();
        ASSERT_TRUE(ripdeck->start(program.string()));
        if (!encoded)
            ripdeck->program().state().settings.encodeWanted = 0;
        ASSERT_EQ(tracks().model()->rowCount(), 3);
    }

    template <class Widget>
    static Widget& named(const char* name)
    {
        Widget* found = nullptr;
        for (QWidget* widget : QApplication::allWidgets())
            if (widget->accessibleName() == QLatin1String(name) && qobject_cast<Widget*>(widget) != nullptr)
                found = qobject_cast<Widget*>(widget);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    static void click(const char* key) { QTest::mouseClick(&named<QAbstractButton>(key), Qt::LeftButton); }
    static QListView& tracks() { return named<QListView>("Tracks"); }
    static QString shown(const char* line) { return named<QWidget>(line).accessibleDescription(); }
    void toggle(int row)
    {
        QTest::mouseClick(tracks().viewport(), Qt::LeftButton, {},
                          tracks().visualRect(tracks().model()->index(row, 0)).center());
    }

    std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(music))
            if (entry.is_regular_file())
                names.insert(fs::relative(entry.path(), music).string());
        return names;
    }

    /// Rips all tracks while every key but those that end the program or the run is pressed at every chance; Eject is
    /// one of those for the drive control. Answers how often that was.
    int ripAllUnderEveryKey()
    {
        std::vector<const char*> keys{"Previous track", "Next track", "Play", "Pause", "Rip",
                                      "Setup",          "TagUtil",    "All",  "Tags",  "Menu"};
        keys.push_back(ripdeck->program().state().path.ripEngineMode == 0 ? "Eject" : "Stop Preview");
        click("All");
        int presses = 0;
        QTimer meddler;
        QObject::connect(&meddler, &QTimer::timeout, [&] {
            if (ripdeck->program().state().flags.ripBusy != 1)
                return;
            ++presses;
            for (const char* key : keys)
                click(key);
            ripdeck->program().forms().ripdeck().Trackprogress.mouseUp(0.5);
            QTest::keyClick(&named<QWidget>("Volume"), presses % 2 == 0 ? Qt::Key_Up : Qt::Key_Down);
            ripdeck->program().forms().id3auto().form.unload();
            if (QWidget* menu = QApplication::activePopupWidget())
                menu->close();
        });
        constexpr int everyMs = 3;
        meddler.start(everyMs);
        click("Rip");
        return presses;
    }

    void expectExact(const std::string& name, std::size_t track) const
    {
        const std::vector<std::byte> sound = test::expectedSound(disc, track);
        const std::vector<std::byte> file = test::readFile(music / name);
        ASSERT_GT(file.size(), 44U) << name;
        EXPECT_TRUE(std::equal(file.begin() + 44, file.end(), sound.begin(), sound.end())) << name;
    }
};

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
