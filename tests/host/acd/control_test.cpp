#include "faulty_disc.h"

#include "host/acd/host_acd_control.h"
#include "support/fake_file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace tonquay::host::test {
namespace {

using platform::DecodeReport;
using testing::HasSubstr;

constexpr std::int64_t bytesPerSecond = 176400;
constexpr std::array<std::int16_t, 3> modes{0, 1, 2};
constexpr std::array<std::int16_t, 3> noDrives{0, 3, -1};

struct FaultyDrives : DriveSet {
    std::deque<FaultyDrive> drives;
    std::size_t count() override { return drives.size(); }
    Drive& at(std::size_t index) override { return drives[index]; }
};

/// The control over one drive with a disc of three tracks, its files in memory.
struct Control : testing::Test {
    Control()
    {
        ::setenv("SDL_AUDIODRIVER", "dummy", 1);
        drives.drives.emplace_back().contents = contents;
        control.setEvents({.ripProgress = [this](std::int32_t tenths) { progress.push_back(tenths); },
                           .ripDone = [this] { ++done; }});
        control.onReadEnd([this](const DecodeReport& report) { reports.push_back(report); });
        control.SelectDrive(1);
    }

    bool untilDone()
    {
        const int before = done;
        return loop.until([this, before] { return done > before; });
    }

    std::string wav(std::size_t track, std::int64_t from = 0, std::int64_t to = -1) const
    {
        const Bytes sound = contents->track(track);
        const std::int64_t end = to < 0 ? std::ssize(sound) : to;
        const auto word = [](std::int64_t value) {
            std::string text;
            for (int i = 0; i < 4; ++i)
                text += static_cast<char>(value >> (8 * i) & 0xFF);
            return text;
        };
        std::string text = "RIFF" + word(end - from + 36) + "WAVEfmt " + word(16) + std::string("\1\0\2\0", 4) +
                           word(44100) + word(bytesPerSecond) + std::string("\4\0\20\0", 4) + "data" + word(end - from);
        for (std::int64_t i = from; i < end; ++i)
            text += static_cast<char>(sound[static_cast<std::size_t>(i)]);
        return text;
    }

    std::string file(const wchar_t* path) { return files.contents(path).value_or("no file"); }

    std::shared_ptr<DiscContents> contents = std::make_shared<DiscContents>(std::vector<int>{600, 903, 500});
    FaultyDrives drives;
    TestLoop loop;
    TestLog log;
    tonquay::test::FakeFileSystem files;
    std::vector<std::int32_t> progress;
    std::vector<DecodeReport> reports;
    int done = 0;
    HostAcdControl control{drives, files, loop, log};
};

TEST_F(Control, everyModeWritesTheWholeTrack)
{
    for (const std::int16_t mode : modes) {
        SCOPED_TRACE(mode);
        progress.clear();
        control.SetRipMode(mode);
        ASSERT_EQ(control.RipTrack(2, L"C:\\m.wav"), 0);
        ASSERT_TRUE(untilDone());
        EXPECT_TRUE(file(L"C:\\m.wav") == wav(1));
        ASSERT_FALSE(reports.empty());
        EXPECT_EQ(reports.back().end, DecodeReport::End::complete);
        EXPECT_EQ(reports.back().bytesDelivered, 903 * 2352);
        EXPECT_EQ(reports.back().track, 1);
        ASSERT_FALSE(progress.empty());
        EXPECT_TRUE(std::ranges::is_sorted(progress));
        EXPECT_LE(progress.back(), 1000);
    }
    EXPECT_EQ(reports[0].crc32, reports[2].crc32);
}

TEST_F(Control, aShorterTrackLeavesNothingOfAnOlderFile)
{
    ASSERT_TRUE(files.writeWhole(L"C:\\m.wav", std::string(20'000'000, 'x')));
    ASSERT_EQ(control.RipTrack(2, L"C:\\m.wav"), 0);
    ASSERT_TRUE(untilDone());
    EXPECT_TRUE(file(L"C:\\m.wav") == wav(1));
}

TEST_F(Control, partIsCutAtTheSampleThatTheMillisecondNames)
{
    struct Case {
        std::int32_t startMs, lengthMs;
        std::int64_t firstSample, endSample;
    };
    const std::int64_t all = std::int64_t{903} * 588;
    const Case cases[] = {
        {1000, 2000, 44100, 132300}, {1, 1, 44, 88}, // 44.1 and 88.2
        {333, 4567, 14685, 216090},                  // 14685.3 and 216090.0
        {0, 500, 0, 22050},          {11000, 1000000, 485100, all},
        {12039, 1, 530919, 530964}, // the last whole millisecond
    };
    for (const std::int16_t mode : modes)
        for (const Case& c : cases) {
            SCOPED_TRACE(std::to_string(c.startMs) + ", mode " + std::to_string(mode));
            control.SetRipMode(mode);
            static_cast<void>(files.remove(L"C:\\p.wav"));
            ASSERT_EQ(control.RipPartial(2, L"C:\\p.wav", c.startMs, c.lengthMs), 0);
            ASSERT_TRUE(untilDone());
            EXPECT_TRUE(file(L"C:\\p.wav") == wav(1, c.firstSample * 4, c.endSample * 4));
        }
    EXPECT_GT(control.RipPartial(2, L"C:\\q.wav", 12041, 1000), 0) << "behind the end";
    EXPECT_GT(control.RipPartial(2, L"C:\\q.wav", 1000, 0), 0);
    EXPECT_FALSE(files.fileExists(L"C:\\q.wav"));
}

TEST_F(Control, whatCannotBeStartedIsRefusedAndBringsNoEvent)
{
    drives.drives.emplace_back().contents = std::make_shared<DiscContents>(std::vector<int>{-300, 400});
    EXPECT_GT(control.RipTrack(0, L"C:\\a.wav"), 0);
    EXPECT_GT(control.RipTrack(4, L"C:\\a.wav"), 0);
    files.fail(tonquay::test::FakeFileSystem::Operation::openBinary, L"C:\\b.wav");
    EXPECT_GT(control.RipTrack(1, L"C:\\b.wav"), 0);
    control.SelectDrive(2);
    EXPECT_EQ(control.GetTrackCount(), 2) << "up to the last audio track";
    EXPECT_GT(control.RipTrack(1, L"C:\\a.wav"), 0) << "data";
    EXPECT_FALSE(control.GetTrackLength(1));
    EXPECT_EQ(*control.GetTrackLength(2), 5333);
    for (const std::int16_t none : noDrives) {
        control.SelectDrive(none);
        EXPECT_GT(control.RipTrack(1, L"C:\\a.wav"), 0);
        EXPECT_EQ(control.GetTrackCount(), 0);
        EXPECT_GT(control.PlayTrack(1, 0, -1), 0);
        control.Eject();
    }
    EXPECT_FALSE(drives.drives[0].open);
    control.SelectDrive(1);
    contents->hold(true);
    EXPECT_EQ(control.RipTrack(1, L"C:\\c.wav"), 0);
    EXPECT_GT(control.RipTrack(2, L"C:\\d.wav"), 0) << "one is under way";
    contents->hold(false);
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(file(L"C:\\c.wav") == wav(0));
}

TEST_F(Control, abortBringsTheEndThoughTheDriveHangs)
{
    control.AbortRip();
    loop.pass();
    EXPECT_EQ(done, 0) << "nothing runs";
    contents->hold(true);
    ASSERT_EQ(control.RipTrack(1, L"C:\\a.wav"), 0);
    control.AbortRip();
    control.AbortRip();
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(done, 1);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].end, DecodeReport::End::stopped);
    EXPECT_EQ(file(L"C:\\a.wav").substr(40), std::string(4, '\0')) << "never looks whole";
    contents->hold(false);
}

TEST_F(Control, lateEndOfAnAbortedTrackDoesNotEndTheNextOne)
{
    contents->hold(true);
    ASSERT_EQ(control.RipTrack(1, L"C:\\a.wav"), 0);
    control.AbortRip();
    ASSERT_TRUE(loop.somethingIsPosted()) << "its end is on the way";
    ASSERT_EQ(control.RipTrack(2, L"C:\\b.wav"), 0);
    loop.wait(std::chrono::milliseconds(20));
    EXPECT_EQ(done, 0);
    contents->hold(false);
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(done, 1);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].track, 1);
    EXPECT_TRUE(file(L"C:\\b.wav") == wav(1));
}

TEST_F(Control, tellsWhyATrackIsNotWhole)
{
    struct Case {
        const char* what;
        std::function<void()> ail;
        DecodeReport::End end;
    };
    const Case cases[] = {
        {"disc taken out", [this] { contents->goneFrom = 300; }, DecodeReport::End::gone},
        {"disk full", [this] { files.capacity = 500000; }, DecodeReport::End::unwritten},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        reports.clear();
        c.ail();
        ASSERT_EQ(control.RipTrack(1, L"C:\\a.wav"), 0);
        ASSERT_TRUE(untilDone());
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports[0].end, c.end);
        EXPECT_EQ(file(L"C:\\a.wav").substr(40, 4), std::string(4, '\0')) << "never looks whole";
        contents->goneFrom = -1;
    }
}

TEST_F(Control, samplesThatWereGivenUpAreToldOfAWholeFile)
{
    drives.drives[0].faults->bad = {80, 81};
    control.SetRipMode(2);
    ASSERT_EQ(control.RipTrack(1, L"C:\\a.wav"), 0);
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(reports[0].end, DecodeReport::End::complete);
    EXPECT_EQ(reports[0].troubles.givenUp, std::vector<std::int32_t>{1});
    std::string wanted = wav(0);
    std::fill_n(wanted.begin() + 44 + 80 * 2352, 2 * 2352, '\0');
    EXPECT_TRUE(file(L"C:\\a.wav") == wanted) << "silence there, and nowhere else";
    EXPECT_THAT(log.lines(), HasSubstr("drive D, track 1: given up in the seconds 1"));
}

TEST_F(Control, probeFailsOnlyWhereADriveGivesNoAudio)
{
    EXPECT_TRUE(control.Probe());
    drives.drives[0].faults->bad = {300};
    EXPECT_TRUE(control.Probe()) << "a scratch is no broken drive";
    for (int sector = 0; sector < 2003; ++sector)
        drives.drives[0].faults->bad.insert(sector);
    EXPECT_FALSE(control.Probe());
    drives.drives[0].contents = nullptr;
    EXPECT_TRUE(control.Probe()) << "no disc";
    drives.drives[0].about.problem = platform::DriveProblem::noPermission;
    EXPECT_FALSE(control.Probe());
    drives.drives.clear();
    EXPECT_TRUE(control.Probe()) << "no drive";
}

TEST_F(Control, playsATrackBesideAnExtraction)
{
    using Engine = platform::AudioEngine;
    EXPECT_EQ(control.PlayTrack(2, 0, -1), 0);
    EXPECT_TRUE(loop.until([this] { return control.player().active() == Engine::playing; }));
    control.PausePlay();
    EXPECT_EQ(control.player().active(), Engine::paused);
    control.PausePlay();
    control.ResumePlay();
    EXPECT_NE(control.player().active(), Engine::paused);
    ASSERT_EQ(control.RipTrack(1, L"C:\\a.wav"), 0);
    control.AbortRip();
    EXPECT_FALSE(control.player().isEngaged()) << "it takes the playback first";
    ASSERT_TRUE(untilDone());
    EXPECT_EQ(reports.back().end, DecodeReport::End::complete);
    EXPECT_EQ(control.PlayTrack(1, 7980, -1), 0) << "the last 20 ms";
    EXPECT_TRUE(loop.until([this] { return control.player().active() == Engine::stopped; }));
    EXPECT_TRUE(control.player().isEngaged()) << "its end ends nothing";
    control.StopPlay();
    EXPECT_FALSE(control.player().isEngaged());
}

TEST_F(Control, goesAwayInTheMiddleOfEverything)
{
    contents->hold(true);
    {
        HostAcdControl other(drives, files, loop, log);
        other.setEvents({.ripProgress = {}, .ripDone = [this] { ++done; }});
        other.SelectDrive(1);
        ASSERT_EQ(other.RipTrack(1, L"C:\\a.wav"), 0);
        other.PlayTrack(2, 0, -1);
    }
    contents->hold(false);
    loop.wait(std::chrono::milliseconds(50));
    EXPECT_EQ(done, 0);
}

}
}
