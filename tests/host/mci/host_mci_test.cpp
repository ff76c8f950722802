#include "host/mci/host_mci.h"

#include "host/audio/fake_drives.h"
#include "support/disc_maker.h"
#include "support/fake_file_system.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace tonquay::host::test {
namespace {

using platform::Mci;
using testing::HasSubstr;
using testing::Not;
using namespace std::chrono_literals;

constexpr std::ptrdiff_t header = 44;
constexpr std::ptrdiff_t msBytes = 176; // and a bit

/// Files that have no place of this system.
struct PlacelessFiles : tonquay::test::FakeFileSystem {
    std::string hostPath(std::wstring_view) override { return "/proc/nowhere/file"; }
};

/// The interpreter over discs in memory, with SDL's silent driver, in the time that it takes.
struct Devices : testing::Test {
    Devices()
    {
        ::setenv("SDL_AUDIODRIVER", "dummy", 1);
        ::unsetenv("SDL_DISKAUDIOFILEIN");
    }

    std::shared_ptr<DiscContents> insert(const std::vector<int>& lengths)
    {
        auto contents = std::make_shared<DiscContents>(lengths);
        drives.drives.emplace_back().contents = contents;
        return contents;
    }

    std::uint32_t send(std::wstring_view command) { return mci.mciSendString(command); }

    std::wstring ask(std::wstring_view command)
    {
        std::array<wchar_t, 64> answer{};
        answer.fill(L'?');
        mci.mciSendString(command, answer);
        return answer.data();
    }

    std::int64_t position() { return std::stoll(ask(L"status cd position")); }

    bool untilPosition(std::int64_t ms)
    {
        return loop.until([&] { return position() >= ms; });
    }

    void openBoth()
    {
        EXPECT_EQ(send(L"open new type waveaudio alias capture"), 0U);
        EXPECT_EQ(send(L"open cdaudio alias cd"), 0U);
    }

    /// The sound of a saved file, after a look at its header.
    Bytes saved(const wchar_t* path)
    {
        const std::string file = files.contents(path).value_or("");
        EXPECT_GE(file.size(), static_cast<std::size_t>(header));
        Bytes bytes(file.size());
        std::memcpy(bytes.data(), file.data(), file.size());
        Bytes sound(bytes.begin() + std::min(header, std::ssize(bytes)), bytes.end());
        EXPECT_TRUE(bytes == tonquay::test::waveFile(sound));
        return sound;
    }

    static Bytes slice(const Bytes& sound, std::ptrdiff_t from, std::ptrdiff_t length)
    {
        const auto begin = sound.begin() + std::min(from, std::ssize(sound));
        return {begin, begin + std::min(length, sound.end() - begin)};
    }

    MemoryDrives drives;
    TestLoop loop;
    TestLog log;
    PlacelessFiles files;
    tonquay::test::DiscFolder folder;
    std::int16_t selected = 0;
    HostMci mci{drives,
                files,
                loop,
                log,
                {.folder = folder.path().string(), .selectedDrive = [this] { return selected; }, .patience = 700ms}};
};

TEST_F(Devices, answersByTheirNumbers)
{
    insert({300, 200});
    struct Case {
        std::wstring_view command;
        std::uint32_t code;
    };
    const Case cases[] = {
        {L"", Mci::noCommand},
        {L"   ", Mci::noCommand},
        {L"open", Mci::unknownDeviceType},
        {L"open cdaudio", Mci::unknownDeviceType},
        {L"open videodisc alias cd", Mci::unknownDeviceType},
        {L"play", Mci::missingWord},
        {L"play cd", Mci::unknownDevice},
        {L"OPEN CDAudio ALIAS Cd", 0},
        {L"open cdaudio alias cd", Mci::nameInUse},
        {L"open new type waveaudio alias CD", Mci::nameInUse},
        {L"open cdaudio alias other", Mci::deviceInUse},
        {L"record cd overwrite", Mci::unknownCommand},
        {L"status cd", Mci::unknownCommand},
        {L"status cd length track", Mci::unknownCommand},
        {L"status cd length track one", Mci::badNumber},
        {L"status cd length track 99999999999", Mci::badNumber},
        {L"status cd length track 0", Mci::outOfRange},
        {L"status cd length track 3", Mci::outOfRange},
        {L"play cd from", Mci::unknownCommand},
        {L"play cd from -1", Mci::badNumber},
        {L"play cd from 6666", Mci::outOfRange},
        {L"open new type waveaudio alias capture", 0},
        {L"set capture", Mci::missingWord},
        {L"set capture channels", Mci::missingWord},
        {L"set capture channels 1", Mci::formatNotRecorded},
        {L"set capture bytespersec many", Mci::badNumber},
        {L"set capture volume 100", Mci::unknownCommand},
        {L"set capture samplespersec 44100 channels 2 bitspersample 16 alignment 4 bytespersec 176400", 0},
        {L"save capture", Mci::missingWord},
        {L"save capture C:\\a b.wav", Mci::unknownCommand},
        {L"save capture \"C:\\a b.wav\"", Mci::fileNotSaved},
        {L"stop capture", 0},
        {L"close capture now", Mci::unknownCommand},
        {L"close capture", 0},
        {L"close capture", Mci::unknownDevice},
    };
    for (const Case& c : cases)
        EXPECT_EQ(send(c.command), c.code) << std::string(c.command.begin(), c.command.end());
    EXPECT_EQ(files.allFiles().size(), 0U);
}

TEST_F(Devices, lengthsAddUpToThePlacesOfTheTracks)
{
    insert({301, -152, 74, 400}); // 4013.3, 2026.7, 986.7 and 5333.3 ms
    ASSERT_EQ(send(L"open cdaudio alias cd"), 0U);
    EXPECT_EQ(ask(L"info cd identity").size(), 28U);
    EXPECT_EQ(ask(L"status cd number of tracks"), L"4");
    const std::array<std::int64_t, 4> ends{4013, 6040, 7026, 12360};
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        sum += std::stoll(ask(L"status cd length track " + std::to_wstring(i + 1)));
        EXPECT_EQ(sum, ends[i]) << "track " << i + 1;
    }
    EXPECT_EQ(send(L"set cd time format hms"), 0U);
    EXPECT_EQ(ask(L"status cd length track 4"), L"00:00:05");
    EXPECT_EQ(ask(L"status cd position"), L"00:00:00");
    EXPECT_EQ(ask(L"status cd length track 5"), L"") << "a failed command answers nothing";
    EXPECT_EQ(send(L"set cd time format milliseconds"), 0U);
    EXPECT_EQ(ask(L"status cd position"), L"0");
    std::array<wchar_t, 3> small{};
    EXPECT_EQ(mci.mciSendString(L"info cd identity", small), 0U);
    EXPECT_EQ(std::wstring(small.data()).size(), 2U);
}

TEST_F(Devices, theSelectedDriveIsTakenElseTheFirstWithADisc)
{
    drives.drives.emplace_back();
    EXPECT_EQ(send(L"open cdaudio alias cd"), Mci::deviceNotReady);
    insert({100});
    insert({100, 100});
    for (const auto& [drive, tracks] : {std::pair{0, L"1"}, std::pair{3, L"2"}, std::pair{9, L"1"}}) {
        selected = static_cast<std::int16_t>(drive);
        ASSERT_EQ(send(L"open cdaudio alias cd"), 0U);
        EXPECT_EQ(ask(L"status cd number of tracks"), tracks);
        EXPECT_EQ(send(L"close cd"), 0U);
    }
    selected = 1;
    EXPECT_EQ(send(L"open cdaudio alias cd"), Mci::deviceNotReady) << "that one has none";
}

TEST_F(Devices, withoutACaptureDeviceTheRecordingIsWhatWasPlayedSampleBySample)
{
    const auto disc = insert({74, 61, 60});
    openBoth();
    ASSERT_EQ(send(L"record capture overwrite"), 0U);
    EXPECT_THAT(log.lines(), HasSubstr("recording source: recorded what was played"));
    std::this_thread::sleep_for(50ms); // nothing is played: nothing is recorded
    ASSERT_EQ(send(L"play cd from 986"), 0U);
    ASSERT_TRUE(loop.until([&] { return ask(L"status cd current track") == L"2"; }));
    ASSERT_TRUE(untilPosition(1800));
    EXPECT_EQ(send(L"stop capture"), 0U);
    EXPECT_EQ(send(L"stop cd"), 0U);
    const std::int64_t stopped = position();
    EXPECT_EQ(send(L"save capture C:\\a.wav"), 0U);
    EXPECT_EQ(send(L"close capture"), 0U);
    const Bytes sound = saved(L"C:\\a.wav");
    const Bytes all = disc->sound;
    EXPECT_TRUE(sound == slice(all, 74 * 2352, std::ssize(sound))) << "begins with the track's first sample";
    EXPECT_GE(std::ssize(sound), 61 * 2352 - 2 * msBytes);
    EXPECT_LE(std::ssize(sound), 61 * 2352 + 100 * msBytes);
    EXPECT_NEAR(static_cast<double>(std::ssize(sound)), static_cast<double>((stopped - 986) * 1764 / 10), 30 * msBytes);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 0) << "temporary files";
}

TEST_F(Devices, aStopInTheOtherOrderRecordsWhatWasHeard)
{
    const auto disc = insert({200});
    openBoth();
    ASSERT_EQ(send(L"record capture overwrite"), 0U);
    ASSERT_EQ(send(L"play cd"), 0U);
    ASSERT_TRUE(untilPosition(300));
    EXPECT_EQ(send(L"stop cd"), 0U);
    EXPECT_EQ(send(L"save capture C:\\a.wav"), 0U);
    const Bytes sound = saved(L"C:\\a.wav");
    EXPECT_TRUE(sound == slice(disc->sound, 0, std::ssize(sound)));
    EXPECT_NEAR(static_cast<double>(std::ssize(sound)), static_cast<double>(position() * 1764 / 10), 2 * msBytes);
    ASSERT_EQ(send(L"record capture overwrite"), 0U);
    EXPECT_EQ(send(L"save capture C:\\a.wav"), 0U) << "in place of the older one";
    EXPECT_EQ(saved(L"C:\\a.wav").size(), 0U);
}

TEST_F(Devices, theEndOfTheDiscEndsTheWaiting)
{
    insert({30, 20});
    ASSERT_EQ(send(L"open cdaudio alias cd"), 0U);
    ASSERT_EQ(send(L"play cd from 400"), 0U);
    ASSERT_TRUE(untilPosition(666));
    EXPECT_EQ(ask(L"status cd position"), L"666");
    EXPECT_EQ(ask(L"status cd current track"), L"2");
    EXPECT_THAT(log.lines(), Not(HasSubstr("recording: ")));
}

TEST_F(Devices, whatGivesNoMoreSoundEndsTheWaitingTooAndIsTold)
{
    struct Case {
        const char* what;
        std::function<void(DiscContents&)> ail;
        const char* told;
    };
    const Case cases[] = {
        {"taken out", [](DiscContents& disc) { disc.goneFrom = 40; }, "recording: the disc was taken out"},
        {"no data for good", [](DiscContents& disc) { disc.badSector = 40; }, "recording: the disc gives no data"},
        {"hangs", [](DiscContents& disc) { disc.hold(true); }, "recording: nothing was played for too long"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        drives.drives.clear();
        const auto disc = insert({2000});
        openBoth();
        EXPECT_EQ(send(L"record capture overwrite"), 0U);
        c.ail(*disc);
        ASSERT_EQ(send(L"play cd"), 0U);
        EXPECT_TRUE(untilPosition(26666));
        EXPECT_EQ(send(L"save capture C:\\a.wav"), 0U);
        const Bytes sound = saved(L"C:\\a.wav");
        EXPECT_LT(std::ssize(sound), 2000 * 2352);
        EXPECT_TRUE(slice(sound, 0, 40 * 2352) ==
                    slice(disc->sound, 0, std::min<std::ptrdiff_t>(40 * 2352, std::ssize(sound))));
        EXPECT_EQ(send(L"close cd"), 0U);
        EXPECT_EQ(send(L"close capture"), 0U);
        EXPECT_THAT(log.lines(), HasSubstr(c.told));
        disc->hold(false);
    }
}

TEST_F(Devices, aDriveThatCannotBePlayedIsNotReady)
{
    insert({100});
    ASSERT_EQ(send(L"open cdaudio alias cd"), 0U);
    drives.drives[0].open = true;
    EXPECT_EQ(send(L"play cd"), Mci::deviceNotReady);
    EXPECT_EQ(ask(L"status cd position"), L"0");
    ::setenv("SDL_AUDIODRIVER", "no such driver", 1);
    drives.drives[0].open = false;
    EXPECT_EQ(send(L"play cd"), 0U) << "silently, but at the right speed";
}

TEST_F(Devices, aRecordingNeedsAPlaceToLie)
{
    HostMci placeless(drives, files, loop, log, {.folder = "/no such folder"});
    EXPECT_EQ(placeless.mciSendString(L"open new type waveaudio alias capture"), Mci::deviceNotReady);
    EXPECT_THAT(log.lines(), HasSubstr("/no such folder"));
}

/// With SDL's driver that records from one file and plays into another.
struct FileDriver : Devices {
    FileDriver()
    {
        std::mt19937 noise(11);
        heard.resize(2'000'000);
        for (std::byte& byte : heard)
            byte = static_cast<std::byte>(noise() & 0xFFU);
        tonquay::test::writeFile(folder.path() / "in", heard);
        ::setenv("SDL_AUDIODRIVER", "disk", 1);
        ::setenv("SDL_DISKAUDIOFILEIN", (folder.path() / "in").c_str(), 1);
        ::setenv("SDL_DISKAUDIOFILE", (folder.path() / "out").c_str(), 1);
        ::setenv("SDL_DISKAUDIODELAY", "2", 1);
    }

    Bytes heard;
};

TEST_F(FileDriver, whatTheCaptureDeviceHearsIsRecordedByteForByte)
{
    insert({400});
    openBoth();
    EXPECT_THAT(log.lines(), Not(HasSubstr("source")));
    ASSERT_EQ(send(L"record capture overwrite"), 0U);
    EXPECT_THAT(log.lines(), HasSubstr("recorded from the system's capture device (disk)"));
    ASSERT_EQ(send(L"play cd"), 0U);
    ASSERT_TRUE(untilPosition(1500));
    EXPECT_EQ(send(L"stop capture"), 0U);
    EXPECT_EQ(send(L"save capture C:\\a.wav"), 0U);
    const Bytes sound = saved(L"C:\\a.wav");
    EXPECT_GT(sound.size(), 50'000U);
    EXPECT_TRUE(sound == slice(heard, 0, std::ssize(sound)));
    EXPECT_THAT(log.lines(), HasSubstr("recording saved: "));
    EXPECT_THAT(log.lines(), Not(HasSubstr("recording: ")));
}

TEST_F(FileDriver, aCaptureThatEndsGivesSilenceAndHangsNobody)
{
    tonquay::test::writeFile(folder.path() / "in", std::string(10'000, 'x'));
    insert({400});
    openBoth();
    ASSERT_EQ(send(L"record capture overwrite"), 0U);
    std::this_thread::sleep_for(200ms);
    EXPECT_EQ(send(L"save capture C:\\a.wav"), 0U);
    const Bytes sound = saved(L"C:\\a.wav");
    ASSERT_GT(sound.size(), 20'000U);
    EXPECT_EQ(sound[9'999], std::byte{'x'});
    EXPECT_EQ(sound[10'000], std::byte{0});
    EXPECT_EQ(sound.back(), std::byte{0});
}

}
}
