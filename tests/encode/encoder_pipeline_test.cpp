#include "encode/encoder_pipeline.h"
#include "encode/run_and_wait.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::encode {
namespace {

using namespace std::chrono_literals;
using Next = EncoderPipeline::Next;
using Operation = test::FakeFileSystem::Operation;
using WindowStyle = platform::Processes::WindowStyle;

/// The encoders of a run into C:\Music, two tracks selected, one not.
struct Encoders : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    std::vector<StartedEncoder> told;
    EncoderPipeline encoders{state, forms, platform, [this](const StartedEncoder& one) { told.push_back(one); }};

    Encoders()
    {
        host.files.putFolder(L"C:\\Music");
        host.processes.scripts = {{.named = L"ENC"}};
        state.settings.encoderPath = L"C:\\X\\ENC.EXE";
        state.run.destFolder = L"C:\\Music";
        state.run.currentName = L"Dawn";
        const wchar_t* titles[] = {L"Dawn", L"Noon", L"Dusk"};
        for (int i = 0; i < 3; ++i) {
            state.disc.trackTitles.set(i + 1, titles[i]);
            forms.ripdeck().list1.add(titles[i]);
            forms.ripdeck().list1.select(i, i != 1);
        }
    }
};

TEST_F(Encoders, runAndWaitTakesAsLongAsTheEncoderAndClearsEncodeBusyAtTheEnd)
{
    constexpr auto longest = 2h;
    host.processes.scripts = {{.named = L"ENC", .lasts = longest, .exitCode = 139}};
    state.flags.encodeBusy = 1;
    bool busyInside = true;
    platform::Processes::Child child = 0;
    host.loop.onTurn = [&] { busyInside = busyInside && state.flags.encodeBusy == 1 && child != 0; };
    const auto start = host.clock.elapsed();
    runAndWait(platform, state.flags, L"C:\\X\\ENC.EXE -h", [&](auto started) { child = started; });
    EXPECT_TRUE(busyInside);
    EXPECT_EQ(state.flags.encodeBusy, 0);
    EXPECT_EQ(host.clock.elapsed() - start, longest);
    EXPECT_EQ(host.loop.passes, 0) << "it sleeps and never spins";
    EXPECT_EQ(host.processes.started[0].style, WindowStyle::normal);
}

TEST_F(Encoders, whatCannotBeStartedHasEndedAtOnce)
{
    host.processes.scripts.clear();
    state.flags.encodeBusy = 1;
    platform::Processes::Child child = 1;
    runAndWait(platform, state.flags, L"C:\\X\\ENC.EXE -h", [&](auto started) { child = started; });
    EXPECT_EQ(host.loop.waits, 0);
    EXPECT_EQ(child, 0U);
    EXPECT_EQ(state.flags.encodeBusy, 0);
    EXPECT_TRUE(host.log.says("Start an encoder"));
}

TEST_F(Encoders, onlyAnEncoderThatIsWaitedForIsStartedOnItsOwnDrive)
{
    const struct {
        const char* what;
        bool waited;
        const wchar_t* command;
        const wchar_t* folder;
    } cases[] = {
        {"its drive", true, L"d:\\ENC.EXE -h", L"D:\\"},
        {"a drive that is not there", true, L"Q:\\ENC.EXE -h", L"C:\\Music"},
        {"in the background", false, L"D:\\ENC.EXE -h", L"C:\\Music"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(host.files.changeDrive(L"C:") && host.files.changeFolder(L"C:\\Music"));
        if (c.waited)
            runAndWait(platform, state.flags, c.command);
        else
            startInBackground(platform, c.command);
        EXPECT_EQ(host.processes.started.back().folder, c.folder) << c.what;
        EXPECT_EQ(host.processes.longWork.size(), host.processes.started.size()) << c.what;
    }
}

TEST_F(Encoders, wholeFolderIsNeverEncodedAndDeletedOutsideTheOutputFolder)
{
    const wchar_t* deleting = L"C:\\BLADEENC.EXE -delete -quit *.wav";
    const wchar_t* keeping = L"C:\\BLADEENC.EXE -quit \"Dawn.wav\"";
    const struct {
        const char* what;
        std::int16_t deleteWav;
        std::optional<Operation> fails;
        std::wstring started;
    } cases[] = {
        {"in the folder", 1, std::nullopt, deleting},
        {"folder not entered", 1, Operation::changeFolder, {}},
        {"drive not entered", 1, Operation::changeDrive, {}},
        {"kept, in the folder", 0, std::nullopt, keeping},
        {"kept, folder not entered", 0, Operation::changeFolder, keeping},
    };
    state.settings.encoderPath = L"C:\\BLADEENC.EXE";
    for (const auto& c : cases) {
        host.processes.started.clear();
        host.log.lines.clear();
        state.settings.deleteWav = c.deleteWav;
        if (c.fails)
            host.files.fail(*c.fails, L"C:\\Music");
        EXPECT_EQ(encoders.encodeBatch(L" \"Dawn.wav\""), Next::tag) << c.what;
        if (c.fails)
            host.files.heal(*c.fails, L"C:\\Music");
        std::wstring started;
        for (const auto& one : host.processes.started)
            started += one.command;
        EXPECT_EQ(started, c.started) << c.what;
        EXPECT_EQ(host.log.says("The batch is not started"), c.started.empty()) << c.what;
    }
}

TEST_F(Encoders, batchKeepsItsSwitchesButAsksEachTrackForItsTitle)
{
    state.settings.encoderPath = L"C:\\OGGENC.EXE";
    state.disc.discYear = L"1999";
    host.loop.onTurn = [&] {
        state.settings.encoderPath = L"C:\\LAME.EXE";
        state.settings.bitrateIndex = 0;
        state.disc.discYear = L"2000";
        state.disc.trackTitles.set(3, L"Night");
    };
    encoders.encodeBatch({});
    ASSERT_EQ(host.processes.started.size(), 2U);
    EXPECT_EQ(host.processes.started[0].command, LR"(C:\OGGENC.EXE -q8 -d"1999" -N1 -t"Dawn" "C:\Music\Dawn.wav")");
    EXPECT_EQ(host.processes.started[1].command, LR"(C:\OGGENC.EXE -q8 -d"1999" -N3 -t"Night" "C:\Music\Night.wav")");
}

TEST_F(Encoders, namesThatChangeDuringTheWaitCostNoOtherTrackItsFile)
{
    host.files.put(L"C:\\Music\\Dawn.wav", "sound");
    host.files.put(L"C:\\Music\\Noon.wav", "sound");
    host.loop.onTurn = [&] { state.run.currentName = L"Noon"; };
    encoders.encodeTrack(0);
    EXPECT_THAT(host.files.allFiles(), testing::ElementsAre(L"C:\\Music\\Noon.wav"));
}

TEST_F(Encoders, eachEncoderOfATrackIsToldOfWithItsFile)
{
    state.settings.encoderPath = L"C:\\LAME.EXE";
    host.processes.scripts = {{.named = L"LAME"}};
    encoders.encodeTrack(0);
    host.processes.scripts.clear();
    encoders.encodeBatch({});
    ASSERT_EQ(told.size(), 3U);
    EXPECT_TRUE(told[0].child != 0 && told[1].child == 0 && told[2].child == 0);
    EXPECT_EQ(told[0].encodedPath, L"C:\\Music\\Dawn.mp3");
    EXPECT_EQ(told[2].row, 2);
    EXPECT_EQ(told[2].encodedPath, L"C:\\Music\\Dusk.mp3");
}

}
}
