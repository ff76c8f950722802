#include "fake_drives.h"

#include "host/audio/host_audio_engine.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace tonquay::host::test {
namespace {

using Engine = platform::AudioEngine;
using namespace std::chrono_literals;

constexpr std::size_t frame = 4;
constexpr std::int64_t sector = 2352;
constexpr std::int64_t second = 176400;

/// Plays into a file, about twenty times as fast as one would listen.
class Playback : public testing::Test {
protected:
    Playback()
    {
        std::string name = testing::TempDir() + "tonquay_playback_XXXXXX";
        folder = mkdtemp(name.data());
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (folder / "heard").c_str(), 1);
        setenv("SDL_DISKAUDIODELAY", "1", 1);
        engine.BASS_Init(1, 44100, 0, 0, 0);
    }

    ~Playback() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::shared_ptr<DiscContents> insert(const std::vector<int>& lengths)
    {
        auto contents = std::make_shared<DiscContents>(lengths);
        drives.drives.emplace_back().contents = contents;
        return contents;
    }

    Engine::Handle make(std::int32_t track, std::uint32_t flags = Engine::BASS_STREAM_AUTOFREE, float volume = 100)
    {
        const auto stream = engine.BASS_CD_StreamCreate(0, track, flags);
        engine.BASS_ChannelSetAttribute(stream, Engine::BASS_ATTRIB_VOL, volume);
        return stream;
    }

    void sync(Engine::Handle stream, std::uint32_t type, std::uint32_t user)
    {
        EXPECT_NE(engine.BASS_ChannelSetSync(
                      stream, type, 0, [this](std::uint32_t told) { syncs.push_back(told); }, user),
                  0U);
    }

    bool untilSync()
    {
        const std::size_t before = syncs.size();
        return loop.until([&] { return syncs.size() > before; });
    }

    bool untilPosition(Engine::Handle stream, std::int64_t position)
    {
        return loop.until([&] { return engine.BASS_ChannelGetPosition(stream, 0) >= position; });
    }

    /// Closes the device and gives all that it played.
    Bytes played()
    {
        engine.BASS_Free();
        std::ifstream file(folder / "heard", std::ios::binary);
        const std::string all((std::istreambuf_iterator<char>(file)), {});
        Bytes bytes(all.size());
        std::memcpy(bytes.data(), all.data(), all.size());
        return bytes;
    }

    /// The same without the frames of silence. (The discs have none.)
    Bytes heard()
    {
        const Bytes all = played();
        Bytes sound;
        for (std::size_t at = 0; at + frame <= all.size(); at += frame)
            if (std::any_of(&all[at], &all[at] + frame, [](std::byte byte) { return byte != std::byte{0}; }))
                sound.insert(sound.end(), &all[at], &all[at] + frame);
        return sound;
    }

    static int sample(const Bytes& bytes, std::size_t index)
    {
        return static_cast<std::int16_t>(std::to_integer<unsigned>(bytes[index * 2]) |
                                         (std::to_integer<unsigned>(bytes[index * 2 + 1]) << 8U));
    }

    static Bytes slice(const Bytes& bytes, std::size_t from, std::size_t to)
    {
        return {bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.begin() + static_cast<std::ptrdiff_t>(to)};
    }

    std::filesystem::path folder;
    MemoryDrives drives;
    TestLoop loop;
    TestLog log;
    HostAudioEngine engine{drives, loop, log};
    std::vector<std::uint32_t> syncs;
};

TEST_F(Playback, whatIsHeardAtFullVolumeIsTheTrackItself)
{
    const auto disc = insert({20, 301, 20});
    const auto stream = make(1);
    EXPECT_FALSE(engine.soundDeviceIsOpen()) << "before the first play";
    sync(stream, Engine::BASS_SYNC_END | Engine::BASS_SYNC_ONETIME, 5);
    sync(stream, Engine::BASS_SYNC_CD_ERROR, 6);
    sync(stream, Engine::BASS_SYNC_SLIDE | Engine::BASS_SYNC_ONETIME, 7);
    EXPECT_TRUE(engine.BASS_ChannelPlay(stream, true));
    EXPECT_TRUE(engine.soundDeviceIsOpen());
    ASSERT_TRUE(untilSync());
    EXPECT_THAT(syncs, testing::ElementsAre(5));
    EXPECT_EQ(engine.BASS_ChannelGetLength(stream, 0), -1) << "freed by its end";
    EXPECT_TRUE(heard() == disc->track(1));
    EXPECT_FALSE(engine.soundDeviceIsOpen());
    EXPECT_EQ(log.lines(), "");
}

TEST_F(Playback, volumeAndPanScaleLinearly)
{
    struct Case {
        const char* what;
        float volume;
        float pan;
        double left;
        double right;
    };
    const Case cases[] = {
        {"half", 50, 0, 0.5, 0.5},
        {"a hundredth, to the left", 1, -100, 0.01, 0},
        {"full, to the right", 100, 100, 0, 1},
        {"a quarter to the left", 100, -25, 1, 0.75},
        {"no change asked, so the start values stay", -1, -101, 0.5, 0.5},
        {"beyond the ranges", 5000, 300, 0, 1},
        {"below the ranges", 100, -300, 1, 0},
    };
    const auto disc = insert({12});
    const Bytes track = disc->track(0);
    for (const Case& c : cases) {
        engine.BASS_Init(1, 44100, 0, 0, 0);
        const auto stream = make(0, 0, c.volume);
        EXPECT_TRUE(engine.BASS_ChannelSetAttribute(stream, Engine::BASS_ATTRIB_PAN, c.pan)) << c.what;
        sync(stream, Engine::BASS_SYNC_END, 0);
        engine.BASS_ChannelPlay(stream, true);
        ASSERT_TRUE(untilSync()) << c.what;
        // The device takes blocks of 1024 frames; sound begins with one of them.
        const Bytes sound = played();
        const auto first = std::ranges::find_if(sound, [](std::byte byte) { return byte != std::byte{0}; });
        const std::size_t begin = static_cast<std::size_t>(first - sound.begin()) / 4096 * 4096;
        ASSERT_LE(begin + track.size(), sound.size()) << c.what;
        for (std::size_t i = 0; i < track.size() / frame * 2; i += 2) {
            const std::size_t at = begin / 2 + i;
            ASSERT_NEAR(sample(sound, at), sample(track, i) * c.left, 1.01) << c.what << ", frame " << i / 2;
            ASSERT_NEAR(sample(sound, at + 1), sample(track, i + 1) * c.right, 1.01) << c.what << ", frame " << i / 2;
        }
    }
}

TEST_F(Playback, attributesAreKeptWithinTheirRanges)
{
    insert({12});
    const auto stream = make(0, 0, -1);
    const auto get = [&](std::uint32_t attribute) {
        float value = -777;
        EXPECT_TRUE(engine.BASS_ChannelGetAttribute(stream, attribute, value));
        return value;
    };
    EXPECT_EQ(get(Engine::BASS_ATTRIB_VOL), engine.BASS_GetVolume());
    EXPECT_EQ(engine.BASS_GetVolume(), 50);
    EXPECT_EQ(get(Engine::BASS_ATTRIB_FREQ), 44100);
    engine.BASS_ChannelSetAttribute(stream, Engine::BASS_ATTRIB_VOL, 101);
    engine.BASS_ChannelSetAttribute(stream, Engine::BASS_ATTRIB_PAN, -102);
    EXPECT_EQ(get(Engine::BASS_ATTRIB_VOL), 100);
    EXPECT_EQ(get(Engine::BASS_ATTRIB_PAN), -100);
    EXPECT_FALSE(engine.BASS_ChannelSetAttribute(stream, Engine::BASS_ATTRIB_VOL, std::nanf("")));
    EXPECT_FALSE(engine.BASS_ChannelSetAttribute(stream, 77, 1));

    Engine::ChannelInfo info;
    EXPECT_TRUE(engine.BASS_ChannelGetInfo(stream, info));
    EXPECT_EQ(info.freq, 44100U);
    EXPECT_EQ(info.chans, 2U);
    EXPECT_EQ(info.flags & Engine::BASS_SAMPLE_8BITS, 0U);
    EXPECT_EQ(engine.BASS_ChannelBytes2Seconds(stream, 441000), 2.5);
}

TEST_F(Playback, pauseHoldsThePlaceAndNoSampleIsLost)
{
    const auto disc = insert({600});
    const auto stream = make(0);
    sync(stream, Engine::BASS_SYNC_END, 1);
    engine.BASS_ChannelPlay(stream, true);
    ASSERT_TRUE(untilPosition(stream, 200000));
    EXPECT_TRUE(engine.BASS_ChannelPause(stream));
    EXPECT_EQ(engine.BASS_ChannelIsActive(stream), Engine::paused);
    EXPECT_FALSE(engine.BASS_ChannelPause(stream));
    const auto place = engine.BASS_ChannelGetPosition(stream, 0);
    EXPECT_GE(place, 200000);
    loop.wait(50ms);
    EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), place);
    EXPECT_EQ(engine.BASS_ChannelGetLevel(stream), 0);
    EXPECT_TRUE(engine.BASS_ChannelPlay(stream, false));
    ASSERT_TRUE(untilSync());
    EXPECT_TRUE(heard() == disc->track(0));
}

TEST_F(Playback, seekGoesToTheVeryFrame)
{
    struct Case {
        const char* what;
        std::int64_t to;
        enum { fresh, paused, playing } when;
        std::int64_t place;
    };
    const Case cases[] = {
        {"ahead of all that was read", 9 * second + 1000, Case::playing, 9 * second + 1000},
        {"back", 8, Case::playing, 8},
        {"inside a frame", 2355, Case::playing, 2352},
        {"while paused, on the edge of a sector", sector * 500, Case::paused, sector * 500},
        {"before it was ever played", 1764000, Case::fresh, 1764000},
        {"to the very end", 750 * sector, Case::playing, 750 * sector},
    };
    const auto disc = insert({3, 750});
    const Bytes track = disc->track(1);
    for (const Case& c : cases) {
        engine.BASS_Init(1, 44100, 0, 0, 0);
        const auto stream = make(1, 0);
        sync(stream, Engine::BASS_SYNC_END, 1);
        if (c.when != Case::fresh) {
            engine.BASS_ChannelPlay(stream, true);
            ASSERT_TRUE(untilPosition(stream, 50000)) << c.what;
        }
        if (c.when == Case::paused)
            engine.BASS_ChannelPause(stream);
        EXPECT_FALSE(engine.BASS_ChannelSetPosition(stream, -4, 0));
        EXPECT_FALSE(engine.BASS_ChannelSetPosition(stream, 750 * sector + 4, 0));
        EXPECT_TRUE(engine.BASS_ChannelSetPosition(stream, c.to, 0)) << c.what;
        if (c.when != Case::playing) {
            EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), c.place) << c.what;
            engine.BASS_ChannelPlay(stream, false);
        }
        ASSERT_TRUE(untilSync()) << c.what;
        const Bytes sound = heard();
        const Bytes expected = slice(track, static_cast<std::size_t>(c.place), track.size());
        ASSERT_GE(sound.size(), expected.size()) << c.what;
        const std::size_t before = sound.size() - expected.size();
        EXPECT_EQ(before == 0, c.when == Case::fresh) << c.what;
        EXPECT_TRUE(slice(sound, before, sound.size()) == expected) << c.what;
        EXPECT_TRUE(slice(sound, 0, before) == slice(track, 0, before)) << c.what;
    }
}

TEST_F(Playback, theDeviceIsClosedWhenNothingWasHeardForAWhile)
{
    insert({600});
    const auto stream = make(0, 0);
    engine.BASS_ChannelPlay(stream, true);
    EXPECT_FALSE(loop.tick()) << "no timer while something is heard";
    EXPECT_TRUE(engine.soundDeviceIsOpen());
    ASSERT_TRUE(untilPosition(stream, 50000));
    engine.BASS_ChannelPause(stream);
    EXPECT_TRUE(engine.soundDeviceIsOpen());
    const auto place = engine.BASS_ChannelGetPosition(stream, 0);
    EXPECT_TRUE(loop.tick());
    EXPECT_FALSE(engine.soundDeviceIsOpen());
    EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), place);

    EXPECT_TRUE(engine.BASS_ChannelPlay(stream, false));
    EXPECT_TRUE(engine.soundDeviceIsOpen());
    EXPECT_FALSE(loop.tick());
    EXPECT_TRUE(untilPosition(stream, place + 50000));
}

TEST_F(Playback, aStreamThatIsNotAutomaticallyFreedPlaysAgainFromItsStart)
{
    const auto disc = insert({30});
    const auto stream = make(0, 0);
    sync(stream, Engine::BASS_SYNC_END, 1);
    sync(stream, Engine::BASS_SYNC_END | Engine::BASS_SYNC_ONETIME, 2);
    engine.BASS_ChannelPlay(stream, true);
    ASSERT_TRUE(untilSync());
    EXPECT_EQ(engine.BASS_ChannelIsActive(stream), Engine::stopped);
    EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), 30 * sector);
    engine.BASS_ChannelPlay(stream, false);
    ASSERT_TRUE(untilSync());
    EXPECT_THAT(syncs, testing::ElementsAre(1, 2, 1)) << "one of them comes once only";
    Bytes twice = disc->track(0);
    const Bytes once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_TRUE(heard() == twice);
}

TEST_F(Playback, restartBeginsAnewWhileItPlays)
{
    const auto disc = insert({200});
    const auto stream = make(0);
    sync(stream, Engine::BASS_SYNC_END, 1);
    engine.BASS_ChannelPlay(stream, true);
    ASSERT_TRUE(untilPosition(stream, 100000));
    EXPECT_TRUE(engine.BASS_ChannelPlay(stream, true));
    ASSERT_TRUE(untilSync());
    const Bytes sound = heard();
    const Bytes track = disc->track(0);
    ASSERT_GE(sound.size(), track.size() + 100000);
    EXPECT_TRUE(slice(sound, sound.size() - track.size(), sound.size()) == track);
}

TEST_F(Playback, noSyncArrivesOfAStreamThatIsOutOfTheWay)
{
    insert({10, 600});
    struct Case {
        const char* what;
        std::uint32_t flags;
        std::function<void(Engine::Handle)> act;
    };
    const Case cases[] = {
        {"stopped", 0, [&](Engine::Handle h) { engine.BASS_ChannelStop(h); }},
        {"stopped and so freed", Engine::BASS_STREAM_AUTOFREE, [&](Engine::Handle h) { engine.BASS_ChannelStop(h); }},
        {"freed", 0, [&](Engine::Handle h) { engine.BASS_StreamFree(h); }},
        {"all stopped", 0, [&](Engine::Handle) { engine.BASS_Stop(); }},
        {"all freed", 0, [&](Engine::Handle) { engine.BASS_Free(); }},
        {"sent back to its start and paused", 0,
         [&](Engine::Handle h) {
             engine.BASS_ChannelSetPosition(h, 0, 0);
             engine.BASS_ChannelPause(h);
         }},
    };
    for (const Case& c : cases) {
        engine.BASS_Init(1, 44100, 0, 0, 0);
        const auto stream = make(0, c.flags);
        sync(stream, Engine::BASS_SYNC_END, 1);
        engine.BASS_ChannelPlay(stream, true);
        // The end has been handed over, and the logic acts before it looks.
        ASSERT_TRUE(loop.somethingIsPosted()) << c.what;
        c.act(stream);
        loop.wait(30ms);
        EXPECT_TRUE(syncs.empty()) << c.what;
        EXPECT_NE(engine.BASS_ChannelIsActive(stream), Engine::playing) << c.what;
    }
}

TEST_F(Playback, aSyncMayStartTheNextTrack)
{
    const auto disc = insert({40, 50});
    const std::function<void(std::uint32_t)> next = [&](std::uint32_t track) {
        syncs.push_back(track);
        if (track == 1)
            return;
        const auto stream = make(1);
        engine.BASS_ChannelPlay(stream, true);
        engine.BASS_ChannelSetSync(stream, Engine::BASS_SYNC_END, 0, next, 1);
    };
    const auto first = make(0);
    engine.BASS_ChannelPlay(first, true);
    engine.BASS_ChannelSetSync(first, Engine::BASS_SYNC_END, 0, next, 0);
    ASSERT_TRUE(loop.until([&] { return syncs.size() == 2; }));
    Bytes both = disc->track(0);
    const Bytes after = disc->track(1);
    both.insert(both.end(), after.begin(), after.end());
    EXPECT_TRUE(heard() == both);
}

TEST_F(Playback, aReadThatFailsIsToldWhenWhatWasReadHasSounded)
{
    struct Case {
        const char* what;
        int badSector;
        int goneFrom;
        std::size_t heardSectors;
    };
    const Case cases[] = {
        {"a bad sector", 100, -1, 100},
        {"the disc taken out", -1, 40, 40},
        {"nothing to read at all", 0, -1, 0},
    };
    const auto disc = insert({300});
    for (const Case& c : cases) {
        engine.BASS_Init(1, 44100, 0, 0, 0);
        disc->badSector = c.badSector;
        disc->goneFrom = c.goneFrom;
        syncs.clear();
        const auto stream = make(0);
        engine.BASS_ChannelPlay(stream, true);
        sync(stream, Engine::BASS_SYNC_END, 1);
        sync(stream, Engine::BASS_SYNC_CD_ERROR | Engine::BASS_SYNC_ONETIME, 2);
        ASSERT_TRUE(untilSync()) << c.what;
        loop.wait(20ms);
        EXPECT_THAT(syncs, testing::ElementsAre(2)) << c.what;
        EXPECT_EQ(engine.BASS_ChannelIsActive(stream), Engine::stopped) << c.what;
        EXPECT_TRUE(heard() == slice(disc->track(0), 0, c.heardSectors * Disc::sectorBytes)) << c.what;
    }
}

TEST_F(Playback, aSlowDiscStallsTheStreamButNotTheLogic)
{
    const auto disc = insert({900});
    disc->hold(true);
    const auto stream = make(0);
    engine.BASS_ChannelPlay(stream, true);
    ASSERT_TRUE(loop.until([&] { return engine.BASS_ChannelIsActive(stream) == Engine::stalled; }));
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), 0);
    EXPECT_TRUE(engine.BASS_ChannelSetPosition(stream, 100000, 0));
    EXPECT_TRUE(engine.BASS_ChannelPause(stream));
    EXPECT_TRUE(engine.BASS_ChannelPlay(stream, false));
    EXPECT_TRUE(engine.BASS_ChannelStop(stream));
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
    disc->hold(false);
}

TEST_F(Playback, decodingATrackFreesWhatPlaysFromTheDrive)
{
    insert({400, 10});
    const auto playing = make(0);
    sync(playing, Engine::BASS_SYNC_END, 1);
    engine.BASS_ChannelPlay(playing, true);
    ASSERT_TRUE(untilPosition(playing, 50000));
    const auto decoding = engine.BASS_CD_StreamCreate(0, 1, Engine::BASS_STREAM_DECODE);
    EXPECT_NE(decoding, 0U);
    EXPECT_EQ(engine.BASS_ChannelGetLength(playing, 0), -1);
    for (int i = 0; i < 20; ++i)
        loop.wait(std::chrono::milliseconds{5});
    EXPECT_TRUE(syncs.empty());
}

TEST_F(Playback, twoStreamsSoundTogether)
{
    const auto disc = insert({60, 400});
    const auto shorter = make(0);
    const auto longer = make(1);
    sync(longer, Engine::BASS_SYNC_END, 2);
    sync(shorter, Engine::BASS_SYNC_END, 1);
    engine.BASS_ChannelPlay(longer, true);
    ASSERT_TRUE(untilPosition(longer, 100000));
    engine.BASS_ChannelPlay(shorter, true);
    ASSERT_TRUE(loop.until([&] { return syncs.size() == 2; }));
    EXPECT_THAT(syncs, testing::ElementsAre(1, 2));

    const Bytes sound = heard();
    const Bytes under = disc->track(1);
    const Bytes over = disc->track(0);
    ASSERT_EQ(sound.size(), under.size());
    std::size_t begin = 0;
    while (begin < sound.size() / 2 && sample(sound, begin) == sample(under, begin))
        ++begin;
    ASSERT_LE(begin + over.size() / 2, sound.size() / 2);
    for (std::size_t i = 0; i < sound.size() / 2; ++i) {
        const bool both = i >= begin && i < begin + over.size() / 2;
        const int sum = sample(under, i) + (both ? sample(over, i - begin) : 0);
        ASSERT_EQ(sample(sound, i), std::clamp(sum, -32768, 32767)) << i;
    }
}

/// Without a device to hear on, at the speed of listening.
class Silently : public Playback {
protected:
    Silently() { setenv("SDL_AUDIODRIVER", "dummy", 1); }
};

TEST_F(Silently, positionFollowsTheClockAndLevelIsOfWhatSounds)
{
    const auto disc = insert({75, 750});
    std::fill_n(disc->sound.begin() + 75 * sector, second, std::byte{0});
    const auto stream = make(1);
    engine.BASS_ChannelPlay(stream, true);
    ASSERT_TRUE(untilPosition(stream, 1));
    const auto began = std::chrono::steady_clock::now();

    std::int64_t last = 0;
    int moves = 0;
    while (last < 176400 / 2) {
        const auto position = engine.BASS_ChannelGetPosition(stream, 0);
        ASSERT_GE(position, last);
        ASSERT_EQ(position % 4, 0);
        moves += position > last ? 1 : 0;
        last = position;
        EXPECT_EQ(engine.BASS_ChannelGetLevel(stream), 0) << "the first second is silent";
        loop.wait(5ms);
        ASSERT_LT(std::chrono::steady_clock::now() - began, 10s);
    }
    EXPECT_GE(std::chrono::steady_clock::now() - began, 400ms);
    EXPECT_GT(moves, 40) << "steps finer than the device's blocks";
    ASSERT_TRUE(untilPosition(stream, 176400 + 9000));
    const auto level = static_cast<std::uint32_t>(engine.BASS_ChannelGetLevel(stream));
    EXPECT_GT(level & 0xFFFFU, 30000U);
    EXPECT_GT(level >> 16U, 30000U);
}

TEST_F(Silently, aMachineWithoutADeviceStillPlays)
{
    struct Case {
        const char* what;
        const char* driver;
        const char* file;
    };
    const Case cases[] = {
        {"a device that does not open", "disk", "/nowhere/at/all"},
        {"no such driver", "tin-can", ""},
    };
    insert({20});
    for (const Case& c : cases) {
        setenv("SDL_AUDIODRIVER", c.driver, 1);
        setenv("SDL_DISKAUDIOFILE", c.file, 1);
        TestLog lines;
        HostAudioEngine silent(drives, loop, lines);
        silent.BASS_Init(1, 44100, 0, 0, 0);
        const auto stream = silent.BASS_CD_StreamCreate(0, 0, Engine::BASS_STREAM_AUTOFREE);
        EXPECT_TRUE(silent.BASS_ChannelPlay(stream, true)) << c.what;
        bool ended = false;
        silent.BASS_ChannelSetSync(
            stream, Engine::BASS_SYNC_END, 0, [&](std::uint32_t) { ended = true; }, 0);
        EXPECT_TRUE(loop.until([&] { return ended; })) << c.what;
        EXPECT_THAT(lines.lines(), testing::StartsWith("sound: no sound device, playing silently: ")) << c.what;
    }
}

TEST_F(Silently, theSignalsThatEndAProgramStayItsOwn)
{
    insert({20});
    engine.BASS_ChannelPlay(make(0), true);
    for (const int number : {SIGINT, SIGTERM}) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        EXPECT_EQ(action.sa_handler, SIG_DFL) << number;
    }
}

TEST_F(Silently, anEngineMayGoInTheMiddleOfEverything)
{
    insert({10, 900});
    for (int round = 0; round < 8; ++round) {
        HostAudioEngine brief(drives, loop, log);
        brief.BASS_Init(1, 44100, 0, 0, 0);
        for (const std::int32_t track : {0, 1}) {
            const auto stream = brief.BASS_CD_StreamCreate(0, track, Engine::BASS_STREAM_AUTOFREE);
            brief.BASS_ChannelPlay(stream, true);
            brief.BASS_ChannelSetSync(
                stream, Engine::BASS_SYNC_END, 0, [this](std::uint32_t) { syncs.push_back(1); }, 0);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{round * 20});
    }
    loop.pass();
    EXPECT_TRUE(syncs.empty());
}

}
}
