#include "support/fake_host.h"

#include <gtest/gtest.h>

using namespace tonquay;
using namespace std::chrono_literals;

TEST(FakeEventLoop, waitsEndAtWhateverIsDueNextAndPassesMoveTimeByOneStep)
{
    test::FakeHost host;
    int ticks = 0;
    const auto timer = host.loop.every(500ms, [&] { ++ticks; });
    const auto start = host.clock.elapsed();
    host.loop.wait(10s);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(host.clock.elapsed() - start, 500ms);
    host.loop.pass();
    EXPECT_EQ(host.clock.elapsed() - start, 501ms);
    host.loop.runFor(2s);
    EXPECT_EQ(ticks, 5);
}

TEST(FakeAudioEngine, deliversEachTracksPatternInBlocksAndEndsWithTheLastByte)
{
    test::FakeHost host;
    host.engine.insertDisc(0, {50000, 1000});
    auto& engine = host.platform().engine;
    const auto stream = engine.BASS_CD_StreamCreate(0, 0, platform::AudioEngine::BASS_STREAM_DECODE);
    std::string sound;
    std::vector<std::byte> block(20000);
    while (engine.BASS_ChannelIsActive(stream) == platform::AudioEngine::playing) {
        const auto count = engine.BASS_ChannelGetData(stream, block);
        for (std::int32_t i = 0; i < count; ++i)
            sound.push_back(static_cast<char>(block[static_cast<std::size_t>(i)]));
    }
    EXPECT_EQ(sound, test::FakeAudioEngine::pattern(0, 50000));
    EXPECT_NE(sound.substr(0, 1000), test::FakeAudioEngine::pattern(1, 1000));
    EXPECT_EQ(engine.BASS_ChannelGetData(stream, block), -1);
}

TEST(FakeAudioEngine, playbackEndsOnFakeTimeAndCallsItsSyncOnce)
{
    test::FakeHost host;
    host.engine.insertDisc(0, {176400 * 3});
    auto& engine = host.platform().engine;
    const auto stream = engine.BASS_CD_StreamCreate(0, 0, platform::AudioEngine::BASS_STREAM_AUTOFREE);
    int ended = 0;
    engine.BASS_ChannelSetSync(
        stream, platform::AudioEngine::BASS_SYNC_END, 0, [&](std::uint32_t) { ++ended; }, 7);
    engine.BASS_ChannelPlay(stream, true);
    host.loop.runFor(1s);
    EXPECT_EQ(engine.BASS_ChannelGetPosition(stream, 0), 176400);
    engine.BASS_ChannelPause(stream);
    host.loop.runFor(5s);
    EXPECT_EQ(ended, 0);
    engine.BASS_ChannelPlay(stream, false);
    host.loop.runFor(1999ms);
    EXPECT_EQ(ended, 0);
    host.loop.runFor(2ms);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(engine.BASS_ChannelGetLength(stream, 0), -1);
}

TEST(FakeProcesses, aChildHoldsItsOutputUntilItsTimeIsUp)
{
    test::FakeHost host;
    host.processes.scripts.push_back(
        {.named = L"lame", .lasts = 300ms, .exitCode = 3, .output = [](const std::wstring&) { return L"out.mp3"; }});
    const auto child = host.processes.start(L"LAME.EXE in.wav out.mp3", platform::Processes::WindowStyle::normal);
    ASSERT_TRUE(child);
    EXPECT_FALSE(host.files.openBinary(L"OUT.mp3"));
    EXPECT_EQ(host.processes.exitCode(*child), std::nullopt);
    host.loop.wait(10s);
    EXPECT_TRUE(host.files.openBinary(L"OUT.mp3"));
    EXPECT_EQ(host.processes.exitCode(*child), 3);
    EXPECT_FALSE(host.processes.start(L"nothing.exe", platform::Processes::WindowStyle::normal));
}
