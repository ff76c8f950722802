#include "fake_drives.h"

#include "host/audio/host_audio_engine.h"

#include <array>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::host::test {
namespace {

using Engine = platform::AudioEngine;
using Report = platform::DecodeReport;

constexpr std::size_t blockBytes = 20000;
constexpr std::int64_t sector = 2352;

class Decode : public testing::Test {
protected:
    std::shared_ptr<DiscContents> insert(const std::vector<int>& lengths)
    {
        auto contents = std::make_shared<DiscContents>(lengths);
        drives.drives.emplace_back().contents = contents;
        return contents;
    }

    void SetUp() override
    {
        engine.BASS_Init(1, 44100, 0, 0, 0);
        engine.onDecodeEnd([this](const Report& report) { reports.push_back(report); });
    }

    Engine::Handle decode(std::int32_t track)
    {
        return engine.BASS_CD_StreamCreate(0, track, Engine::BASS_STREAM_DECODE);
    }

    /// As a ripper does it: blocks of one size while the stream is active.
    Bytes readAll(Engine::Handle stream)
    {
        Bytes all;
        Bytes block(blockBytes);
        while (engine.BASS_ChannelIsActive(stream) != Engine::stopped) {
            lastAnswer = engine.BASS_ChannelGetData(stream, block);
            if (lastAnswer > 0)
                all.insert(all.end(), block.begin(), block.begin() + lastAnswer);
            EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), static_cast<std::int64_t>(all.size()));
        }
        return all;
    }

    /// Bit by bit, as ISO 3309 defines it.
    static std::uint32_t crcOf(const Bytes& bytes)
    {
        std::uint32_t crc = 0xFFFFFFFFU;
        for (const std::byte byte : bytes) {
            crc ^= std::to_integer<std::uint32_t>(byte);
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
        return ~crc;
    }

    MemoryDrives drives;
    TestLoop loop;
    TestLog log;
    std::vector<Report> reports;
    HostAudioEngine engine{drives, loop, log};
    std::int32_t lastAnswer = 0;
};

TEST_F(Decode, deliversEachTrackBitForBitAndEndsWithItsLastByte)
{
    struct Case {
        const char* what;
        int sectors;
    };
    const Case cases[] = {
        {"one sector", 1},
        {"one sector more than a run", 76},
        {"a multiple of the block: 1250 sectors are 147 blocks", 1250},
        {"longer than all that is read ahead", 3001},
    };
    std::vector<int> lengths;
    for (const Case& c : cases)
        lengths.push_back(c.sectors);
    const auto disc = insert(lengths);

    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const Bytes expected = disc->track(i);
        const auto stream = decode(static_cast<std::int32_t>(i));
        EXPECT_EQ(engine.BASS_ChannelGetLength(stream, 0), static_cast<std::int64_t>(expected.size()));
        EXPECT_TRUE(readAll(stream) == expected) << cases[i].what;

        const std::size_t rest = expected.size() % blockBytes;
        EXPECT_EQ(lastAnswer, static_cast<std::int32_t>(rest == 0 ? blockBytes : rest)) << cases[i].what;
        std::array<std::byte, 4> more{};
        EXPECT_EQ(engine.BASS_ChannelGetData(stream, more), -1) << cases[i].what;
        ASSERT_EQ(reports.size(), i + 1) << cases[i].what;
        EXPECT_EQ(reports[i].end, Report::End::complete);
        EXPECT_EQ(reports[i].crc32, crcOf(expected));
        EXPECT_EQ(reports[i].bytesDelivered, reports[i].bytesExpected);
        EXPECT_EQ(reports[i].track, static_cast<std::int32_t>(i));
        EXPECT_TRUE(engine.BASS_StreamFree(stream));
        EXPECT_EQ(reports.size(), i + 1) << "told once";
    }
}

TEST_F(Decode, takesBuffersOfAnySize)
{
    const auto disc = insert({10, 700});
    const auto stream = decode(1);
    Bytes all;
    std::size_t size = 3;
    while (engine.BASS_ChannelIsActive(stream) != Engine::stopped) {
        Bytes block(size);
        const auto got = engine.BASS_ChannelGetData(stream, block);
        ASSERT_GE(got, 0);
        ASSERT_TRUE(got == static_cast<std::int32_t>(size / 4 * 4) ||
                    got == static_cast<std::int32_t>(1646400 - all.size()))
            << size;
        all.insert(all.end(), block.begin(), block.begin() + got);
        size = size * 3 + 1;
    }
    EXPECT_TRUE(all == disc->track(1));
}

TEST_F(Decode, deliversAllBeforeABadSectorThenFails)
{
    struct Case {
        const char* what;
        int badSector;
        int goneFrom;
        std::int64_t delivered;
        Report::End end;
    };
    const Case cases[] = {
        {"in the middle of a run", 10 + 333, -1, 333 * sector, Report::End::unreadable},
        {"at the start of a run", 10 + 150, -1, 150 * sector, Report::End::unreadable},
        {"the first sector", 10, -1, 0, Report::End::unreadable},
        {"the last sector", 10 + 599, -1, 599 * sector, Report::End::unreadable},
        {"a block ends right before it", 10 + 1250 - 1000 + 250, -1, 500 * sector, Report::End::unreadable},
        {"taken out", -1, 10 + 80, 80 * sector, Report::End::gone},
        {"the track behind is no matter", 10 + 600, -1, 600 * sector, Report::End::complete},
    };
    const auto disc = insert({10, 600, 5});
    const Bytes whole = disc->track(1);
    for (const Case& c : cases) {
        disc->badSector = c.badSector;
        disc->goneFrom = c.goneFrom;
        reports.clear();
        const auto stream = decode(1);
        const Bytes got = readAll(stream);
        const Bytes expected(whole.begin(), whole.begin() + c.delivered);
        EXPECT_TRUE(got == expected) << c.what;
        EXPECT_EQ(lastAnswer == -1, c.end != Report::End::complete) << c.what;
        ASSERT_EQ(reports.size(), 1U) << c.what;
        EXPECT_EQ(reports[0].end, c.end) << c.what;
        EXPECT_EQ(reports[0].bytesDelivered, c.delivered) << c.what;
        EXPECT_EQ(reports[0].crc32, crcOf(expected)) << c.what;
        EXPECT_EQ(reports[0].firstBadSector, c.end == Report::End::complete ? -1 : std::max(c.badSector, c.goneFrom))
            << c.what;
        engine.BASS_StreamFree(stream);
    }
    EXPECT_THAT(log.lines(), testing::HasSubstr("drive D, track 2: no data at sector 343\n"));
}

TEST_F(Decode, aDiscShorterThanItsTableFailsWhereItEnds)
{
    const auto disc = insert({100});
    disc->sound.resize(60 * Disc::sectorBytes);
    EXPECT_EQ(readAll(decode(0)).size(), 60 * Disc::sectorBytes);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].end, Report::End::unreadable);
    EXPECT_EQ(reports[0].firstBadSector, 60);
}

TEST_F(Decode, levelIsThatOfTheLastBlockAndConsumesNothing)
{
    const auto disc = insert({76, 1});
    std::ranges::fill(disc->sound, std::byte{0});
    const auto put = [&](std::size_t frame, std::size_t side, int sample) {
        disc->sound[frame * 4 + side * 2] = static_cast<std::byte>(sample & 0xFF);
        disc->sound[frame * 4 + side * 2 + 1] = static_cast<std::byte>((sample >> 8) & 0xFF);
    };
    put(10, 0, 1000);
    put(10, 1, -32768);
    // The second block is frames 5000 to 9999, the ninth 40000 to 44687. Runs end at frames 8820 and 44100, or there
    // about: what a block got from the run before counts too.
    put(5000, 0, -7);
    put(9900, 1, 12);
    put(44000, 0, 300);
    put(44600, 1, -400);
    const auto stream = decode(0);
    Bytes block(blockBytes);
    const auto level = [&] { return static_cast<std::uint32_t>(engine.BASS_ChannelGetLevel(stream)); };

    EXPECT_EQ(level(), 0U) << "nothing delivered yet";
    engine.BASS_ChannelGetData(stream, block);
    EXPECT_EQ(level(), 0x80000000U | 1000U);
    EXPECT_EQ(level(), 0x80000000U | 1000U);
    engine.BASS_ChannelGetData(stream, block);
    EXPECT_EQ(level(), 7U | (12U << 16U));
    EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), 40000);
    for (int i = 2; i < 8; ++i)
        engine.BASS_ChannelGetData(stream, block);
    EXPECT_EQ(level(), 0U);
    EXPECT_EQ(engine.BASS_ChannelGetData(stream, block), 18752);
    EXPECT_EQ(level(), 300U | (400U << 16U));
    EXPECT_EQ(engine.BASS_ChannelIsActive(stream), Engine::stopped);
}

TEST_F(Decode, cannotBePlayedPausedOrMoved)
{
    insert({5});
    const auto stream = decode(0);
    EXPECT_FALSE(engine.BASS_ChannelPlay(stream, true));
    EXPECT_FALSE(engine.BASS_ChannelPause(stream));
    EXPECT_FALSE(engine.BASS_ChannelSetPosition(stream, 0, 0));
    EXPECT_FALSE(engine.soundDeviceIsOpen());
    Bytes block(blockBytes);
    EXPECT_EQ(engine.BASS_ChannelGetData(stream, block), 11760);
}

TEST_F(Decode, aStopOrAFreeEndsItWithAReportOfWhatWasDelivered)
{
    const auto disc = insert({300});
    const Bytes whole = disc->track(0);
    struct Case {
        const char* what;
        std::function<void(Engine::Handle)> end;
    };
    const Case cases[] = {
        {"stop", [&](Engine::Handle h) { engine.BASS_ChannelStop(h); }},
        {"free", [&](Engine::Handle h) { engine.BASS_StreamFree(h); }},
        {"the whole engine", [&](Engine::Handle) { engine.BASS_Free(); }},
    };
    for (const Case& c : cases) {
        reports.clear();
        const auto stream = decode(0);
        Bytes block(blockBytes);
        for (int i = 0; i < 10; ++i)
            engine.BASS_ChannelGetData(stream, block);
        c.end(stream);
        EXPECT_EQ(engine.BASS_ChannelIsActive(stream), Engine::stopped) << c.what;
        ASSERT_EQ(reports.size(), 1U) << c.what;
        EXPECT_EQ(reports[0].end, Report::End::stopped) << c.what;
        EXPECT_EQ(reports[0].crc32, crcOf({whole.begin(), whole.begin() + 200000})) << c.what;
        EXPECT_EQ(reports[0].bytesDelivered, 200000) << c.what;
    }
}

TEST_F(Decode, twoStreamsGoOnBesideEachOther)
{
    const auto disc = insert({900, 901});
    const auto first = decode(0);
    const auto second = decode(1);
    Bytes got[2];
    Bytes block(blockBytes);
    for (bool more = true; more;) {
        more = false;
        for (const int i : {0, 1}) {
            const auto stream = i == 0 ? first : second;
            if (engine.BASS_ChannelIsActive(stream) == Engine::stopped)
                continue;
            more = true;
            const auto size = engine.BASS_ChannelGetData(stream, block);
            got[i].insert(got[i].end(), block.begin(), block.begin() + size);
        }
    }
    EXPECT_TRUE(got[0] == disc->track(0));
    EXPECT_TRUE(got[1] == disc->track(1));
}

TEST_F(Decode, readsAheadButNotWithoutBound)
{
    const auto disc = insert({9000});
    const auto stream = decode(0);
    ASSERT_TRUE(loop.until([&] { return disc->sectorsRead > 100; }));
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    const int ahead = disc->sectorsRead;
    EXPECT_LE(ahead, 600);
    Bytes second(176400);
    engine.BASS_ChannelGetData(stream, second);
    engine.BASS_ChannelGetData(stream, second);
    EXPECT_TRUE(loop.until([&] { return disc->sectorsRead > ahead; })) << "the reader follows its consumer";
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    EXPECT_LE(disc->sectorsRead, 600 + 150);
}

TEST_F(Decode, aDriveThatHangsDoesNotHoldUpWhoFreesTheStream)
{
    const auto disc = insert({900});
    disc->hold(true);
    const auto before = std::chrono::steady_clock::now();
    for (int i = 1; i <= 5; ++i) {
        const auto stream = decode(0);
        ASSERT_TRUE(loop.until([&] { return disc->readsUnderWay == i; }));
        EXPECT_TRUE(engine.BASS_StreamFree(stream));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds{2});

    engine.BASS_Free();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds{5});
    disc->hold(false);
    // Nobody waits for those threads any more, so only what they held tells that they came to an end.
    EXPECT_TRUE(loop.until([&] { return disc.use_count() == 2; }));
}

}
}
