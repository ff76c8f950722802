#pragma once

#include "ui/ripdeck/ripdeck.h"

#include "support/disc_maker.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QListView>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tonquay::ui {

inline constexpr int sectorsPerSecond = 75;

/// The desktop program on a made disc of three tracks, with a home and a program folder of its own, driven by its
/// widgets alone.
struct DesktopProgram : testing::Test {
    test::DiscFolder folder;
    test::DiscPlan disc{.tracks = {{.sectors = 11 * sectorsPerSecond, .title = "Dawn"},
                                   {.sectors = 12 * sectorsPerSecond, .title = "Noon"},
                                   {.sectors = 13 * sectorsPerSecond, .title = "Dusk"}}};
    std::filesystem::path music = folder.path() / "Music";
    std::unique_ptr<Ripdeck> ripdeck;

    DesktopProgram()
    {
        setenv("HOME", folder.path().c_str(), 1);
        for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
            unsetenv(variable);
        // Nobody is to hear the tests, and sound servers leave threads behind.
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        setenv("TONQUAY_DISCS", test::makeDisc(folder.path(), disc).c_str(), 1);
        std::filesystem::create_directory(music);
    }

    /// `encoded` asks for MP3 files, one at a time. `method` below 4 reads with the drive control.
    void start(bool encoded, int method = 4)
    {
        const std::filesystem::path program = folder.path() / "program";
        std::filesystem::create_directory(program);
        test::writeFile(program / "riptype.ini", method == 4 ? "\"0\"\r\n" : "\"1\"\r\n");
        const auto lame = test::runProgram({"sh", "-c", "command -v lame"}).out;
        std::filesystem::create_symlink(lame.substr(0, lame.find('\n')), program / "lame.exe");
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
        for (const auto& entry : std::filesystem::recursive_directory_iterator(music))
            if (entry.is_regular_file())
                names.insert(std::filesystem::relative(entry.path(), music).string());
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
            ripdeck->program().forms().cdriptab().cmdCancel.press();
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

}
