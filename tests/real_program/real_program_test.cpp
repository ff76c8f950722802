#include "app/program.h"
#include "disc/handover_writer.h"
#include "host/real/real_host.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "state/rip_settings_file.h"
#include "support/disc_maker.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

namespace tonquay {
namespace {

namespace fs = std::filesystem;
using controls::MouseButton;
using namespace std::chrono_literals;

class RealProgram : public testing::Test {
protected:
    RealProgram()
    {
        ::setenv("XDG_STATE_HOME", folder_.path().c_str(), 1);
        for (int i = 0; i < 3; ++i)
            plan_.tracks.push_back({.sectors = 300 + 7 * i, .title = "Song " + std::to_string(i + 1)});
        plan_.artist = "Ann";
        host::DriveSources sources;
        sources.images = {test::makeDisc(folder_.path(), plan_)};
        sources.machine = false;
        host_.emplace(sources);
        EXPECT_TRUE(host_->open({}));
        platform::Platform platform = host_->platform();
        const auto table = host_->discs().read(L'D');
        EXPECT_TRUE(table);

        state::Folders folders;
        folders.appFolder = L"C:\\CDTONQUAY";
        state::RipSettings settings;
        settings.outputFolder = platform.files.programPath(out().string());
        settings.dirMode = 0;
        settings.createProgram = 0;
        settings.encodeWanted = 0;
        settings.encoderPath = L"C:\\lame.exe";
        fs::create_directory(out());
        state::writeRipSettings(platform.files, platform.log, folders, settings);
        EXPECT_TRUE(platform.files.writeWhole(L"C:\\CDTONQUAY\\audiocd.dat", disc::makeHandOver(*table, L'D').bytes));
        program_.emplace(platform);
        program_->start(folders.appFolder);
    }

    fs::path out() const { return folder_.path() / "out"; }
    state::RipdeckControls& main() { return program_->forms().ripdeck(); }
    void press(state::TransportKey key) { main().icntla[key].mouseUp(MouseButton::left); }
    void runFor(std::chrono::milliseconds time)
    {
        const auto until = std::chrono::steady_clock::now() + time;
        while (std::chrono::steady_clock::now() < until)
            host_->platform().loop.wait(20ms);
    }

    void expectWhole(std::size_t track)
    {
        std::ifstream file(out() / (plan_.tracks[track].title + ".wav"), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        const std::vector<std::byte> sound = test::expectedSound(plan_, track);
        ASSERT_EQ(bytes.size(), sound.size() + 44);
        EXPECT_EQ(std::memcmp(bytes.data() + 44, sound.data(), sound.size()), 0) << "track " << track + 1;
    }

    test::DiscFolder folder_;
    test::DiscPlan plan_;
    std::optional<host::RealHost> host_;
    std::optional<app::Program> program_;
};

TEST_F(RealProgram, previewMovesThenStopThenRipGivesEveryFile)
{
    main().list1.setCursor(0);
    press(state::playButton);
    runFor(1500ms);
    EXPECT_NE(main().lblTrackTime.caption.get(), L"00:00") << "its position moves";
    EXPECT_EQ(main().lblTrackTot.caption.get(), L"00:04");
    press(state::stopButton);
    main().image10[state::selectAllKey].mouseUp(MouseButton::left);
    press(state::startButton);
    for (std::size_t track = 0; track < 3; ++track)
        expectWhole(track);
}

TEST_F(RealProgram, endOfATrackStartsTheNext)
{
    main().list1.setCursor(0);
    press(state::playButton);
    runFor(1000ms);
    main().Trackprogress.mouseUp(0.95);
    runFor(1200ms);
    EXPECT_EQ(program_->forms().cdrip1().lstTracks.index(), 1);
}

TEST_F(RealProgram, keysPressedDuringARipChangeNoSample)
{
    const auto meddling = host_->platform().loop.every(1ms, [this] {
        press(state::playButton);
        press(state::pauseButton);
        press(state::nextButton);
        press(state::ejectButton);
        main().Trackprogress.mouseUp(0.3);
    });
    press(state::startButton);
    for (std::size_t track = 0; track < 3; ++track)
        expectWhole(track);
}

TEST_F(RealProgram, previewThatIsStillPlayingGivesWayToTheRip)
{
    main().list1.setCursor(2);
    press(state::playButton);
    runFor(300ms);
    press(state::startButton);
    for (std::size_t track = 0; track < 3; ++track)
        expectWhole(track);
    EXPECT_EQ(program_->state().flags.previewActive, 0);
}

}
}
