#include "app/program.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::app {
namespace {

using controls::MouseButton;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr std::int32_t second = 176400;

/// The whole program on a disc of three tracks, its list read and every track selected.
struct WholeProgram : testing::Test {
    test::FakeHost host;
    Program program{host.platform()};
    state::RipdeckControls& main = program.forms().ripdeck();

    WholeProgram()
    {
        host.engine.insertDisc(0, {12 * second, 13 * second, 14 * second});
        host.files.discTracks[L'D'] = 3;
        host.files.putFolder(L"C:\\CDTONQUAY\\datacd");
        std::string text = "\"Ann\",\"Light\",3,\"Dawn\",\"Noon\",\"Dusk\"";
        for (int i = 4; i <= 103; ++i)
            text += ",\"\"";
        host.files.put(L"C:\\CDTONQUAY\\audiocd.dat", text + ",\"D\"\r\n");
        host.files.put(L"C:\\CDTONQUAY\\acdset.ini",
                       "\"D\",\"C:\\CDTONQUAY\\datacd\",0,0,\"c:\\lame.exe\",0,0,0,0,1,8,\"\",\"\",4,\"0\"\r\n");
        program.start(L"C:\\CDTONQUAY");
    }

    void press(state::TransportKey key)
    {
        main.icntla[key].mouseDown(MouseButton::left);
        main.icntla[key].mouseUp(MouseButton::left);
    }

    /// But Stop and the keys that end the program or empty the selection, which have tests of their own.
    void pressEveryKey()
    {
        for (const state::TransportKey key : {state::previousButton, state::nextButton, state::playButton,
                                              state::pauseButton, state::ejectButton, state::startButton})
            press(key);
        for (const controls::Label& label : main.LabelP)
            label.mouseUp(MouseButton::left);
        main.Trackprogress.mouseUp(0.5);
        main.SliderVolume.drag(main.SliderVolume.value() == -100 ? 0 : -100);
        main.SliderBalance.drag(30);
        for (const state::CommandKey key :
             {state::setupKey, state::partialKey, state::selectAllKey, state::discTagsKey, state::ripKey})
            main.image10[key].mouseUp(MouseButton::left);
    }

    void expectWhole(const wchar_t* title, int track, int seconds)
    {
        const auto file = host.files.contents(std::wstring(L"C:\\CDTONQUAY\\datacd\\") + title + L".wav");
        ASSERT_TRUE(file) << title;
        EXPECT_TRUE(file->substr(44) == test::FakeAudioEngine::pattern(track, seconds * second)) << title;
    }
};

TEST_F(WholeProgram, previewThenStopThenRipGivesEveryFile)
{
    press(state::playButton);
    host.loop.runFor(2s);
    EXPECT_EQ(program.state().flags.previewActive, 1);
    press(state::stopButton);
    EXPECT_EQ(program.state().flags.previewActive, 0);
    EXPECT_EQ(main.list1.selectedCount(), 0);
    main.image10[state::selectAllKey].mouseUp(MouseButton::left);
    press(state::startButton);
    expectWhole(L"Dawn", 0, 12);
    expectWhole(L"Noon", 1, 13);
    expectWhole(L"Dusk", 2, 14);
    EXPECT_TRUE(program.state().flags.encodeOnly == 0 && !main.list1.busyPointer);
}

TEST_F(WholeProgram, ripThatFindsAPreviewPlayingIsJustAsExact)
{
    press(state::playButton);
    host.loop.runFor(1s);
    press(state::startButton);
    expectWhole(L"Dusk", 2, 14);
    EXPECT_EQ(host.engine.streamCount(), 0U) << "nothing goes on sounding";
    press(state::playButton);
    EXPECT_EQ(host.engine.BASS_ChannelIsActive(program.state().engine.audioStream), platform::AudioEngine::playing)
        << "and the Play key works after the run";
}

TEST_F(WholeProgram, stopInTheFirstTrackLeavesItWholeAndNoOthers)
{
    host.loop.after(100ms, [&] { press(state::stopButton); });
    press(state::startButton);
    expectWhole(L"Dawn", 0, 12);
    EXPECT_FALSE(host.files.fileExists(L"C:\\CDTONQUAY\\datacd\\Noon.wav"));
    EXPECT_EQ(program.state().flags.stopRequested, 0);
    main.image10[state::selectAllKey].mouseUp(MouseButton::left);
    press(state::startButton);
    expectWhole(L"Dusk", 2, 14);
}

TEST_F(WholeProgram, everyKeyPressedInEveryWaitChangesNoSample)
{
    host.loop.onTurn = [&] { pressEveryKey(); };
    press(state::startButton);
    host.loop.onTurn = nullptr;
    expectWhole(L"Dawn", 0, 12);
    expectWhole(L"Noon", 1, 13);
    expectWhole(L"Dusk", 2, 14);
    EXPECT_EQ(program.state().flags.ripBusy, 0);
}

TEST_F(WholeProgram, programFileWrittenInTheMiddleChangesNoFile)
{
    // Another folder and another name than the run's own, in the middle of the first track.
    program.state().settings.encodeSingle = 1;
    program.state().settings.encodeWanted = 1;
    host.processes.scripts = {{.named = L"LAME"}};
    host.loop.after(20ms, [&] {
        program.state().settings.outputFolder = L"C:\\CDTONQUAY\\elsewhere";
        program.forms().controlsOf<state::PopaControls>().pop[state::saveProgramEntry].choose();
    });
    press(state::startButton);
    expectWhole(L"Dawn", 0, 12);
    expectWhole(L"Dusk", 2, 14);
    ASSERT_EQ(host.processes.started.size(), 3U);
    EXPECT_THAT(base::utf8(host.processes.started[0].command),
                testing::EndsWith("\"C:\\CDTONQUAY\\datacd\\Dawn.wav\" \"C:\\CDTONQUAY\\datacd\\Dawn.mp3\""));
    const auto written = host.files.contents(L"C:\\CDTONQUAY\\datacd\\Ann - Light.pg1");
    EXPECT_THAT(written.value_or(""), testing::HasSubstr("elsewhere"));
}

TEST_F(WholeProgram, everyKeyPressedDuringEveryEncoderChangesNoSchedule)
{
    const struct {
        const char* what;
        std::int16_t single;
        std::int16_t turbo;
    } schedules[] = {{"single", 1, 0}, {"Turbo", 1, 1}, {"batch", 0, 0}};
    host.engine.insertDisc(0, {second, second, second});
    state::RipSettings& settings = program.state().settings;
    settings.encodeWanted = 1;
    settings.deleteWav = 1;
    const std::wstring folder = L"C:\\CDTONQUAY\\datacd\\";
    int duringEncoders = 0;
    std::int64_t bytesToEncode = 0;
    const auto addInput = [&](const std::wstring& command) {
        const std::size_t from = command.find(L'"') + 1;
        bytesToEncode += host.files.length(command.substr(from, command.find(L'"', from) - from));
    };
    host.processes.scripts = {{.named = L"LAME", .lasts = 300ms, .atStart = addInput}};
    host.loop.onTurn = [&] {
        duringEncoders += host.processes.living() > 0 ? 1 : 0;
        pressEveryKey();
    };
    for (const auto& c : schedules) {
        settings.encodeSingle = c.single;
        settings.turboMode = c.turbo;
        host.processes.started.clear();
        main.image10[state::selectAllKey].mouseUp(MouseButton::left);
        duringEncoders = 0;
        bytesToEncode = 0;
        press(state::startButton);
        EXPECT_GT(duringEncoders, 3) << c.what;
        std::wstring files;
        for (const auto& one : host.processes.started)
            files += one.command.substr(one.command.find(L'"'));
        std::wstring expected;
        for (const wchar_t* title : {L"Dawn", L"Noon", L"Dusk"})
            expected += L'"' + folder + title + L".wav\" \"" + folder + title + L".mp3\"";
        EXPECT_EQ(files, expected) << c.what;
        EXPECT_EQ(bytesToEncode, 3 * (44 + second)) << c.what << ": each WAV file is whole when its encoder starts";
        EXPECT_THAT(*host.files.list(folder, L"*"), IsEmpty()) << c.what;
        EXPECT_EQ(program.state().flags.ripBusy, 0) << c.what;
    }
}

TEST_F(WholeProgram, transportKeysWalkTheListAndShowWhatPlays)
{
    main.list1.setCursor(1);
    press(state::previousButton);
    EXPECT_EQ(main.Label8.caption.get(), L"0") << "nothing plays, nothing before it";
    press(state::playButton);
    EXPECT_EQ(main.Label8.caption.get(), L"2");
    EXPECT_EQ(main.Label13.caption.get(), L"Noon");
    press(state::nextButton);
    press(state::nextButton);
    EXPECT_EQ(main.Label8.caption.get(), L"3") << "the last one stays";
    EXPECT_EQ(main.list1.selectedCount(), 3) << "selections are left as they were";
    press(state::pauseButton);
    EXPECT_EQ(main.icntla[state::pauseButton].picture.get(), state::runningLook);
    EXPECT_EQ(main.Label66.caption.get(), L"Pause");
    press(state::playButton);
    EXPECT_EQ(host.engine.BASS_ChannelIsActive(program.state().engine.audioStream), platform::AudioEngine::playing);
    press(state::previousButton);
    EXPECT_EQ(main.Label8.caption.get(), L"2");
    main.Trackprogress.mouseUp(0.5);
    host.loop.runFor(100ms);
    EXPECT_EQ(main.lblTrackTime.caption.get(), L"00:07");
    press(state::ejectButton);
    EXPECT_TRUE(host.engine.drives[0].open);
    EXPECT_EQ(main.Label8.caption.get(), L"0");
}

TEST_F(WholeProgram, stopSilencesAPreviewThatPlaysBesideEncoders)
{
    program.state().settings.encodeWanted = 1;
    host.processes.scripts = {{.named = L"LAME", .lasts = 5s}};
    press(state::playButton);
    host.loop.after(1s, [&] { press(state::stopButton); });
    program.forms().controlsOf<state::PopaControls>().pop[state::encodeEntry].choose();
    EXPECT_EQ(host.engine.streamCount(), 0U);
}

TEST_F(WholeProgram, everyPreviewSoundsAsTheSlidersStand)
{
    const auto gain = [this](std::uint32_t attribute) {
        float value = 0;
        host.engine.BASS_ChannelGetAttribute(program.state().engine.audioStream, attribute, value);
        return value;
    };
    main.SliderVolume.drag(-90);
    main.SliderBalance.drag(-30);
    press(state::playButton);
    host.loop.runFor(13s);
    press(state::nextButton);
    for (const auto play : {state::nextButton, state::previousButton}) {
        press(play);
        EXPECT_EQ(gain(platform::AudioEngine::BASS_ATTRIB_VOL), 90);
        EXPECT_EQ(gain(platform::AudioEngine::BASS_ATTRIB_PAN), -30);
    }
    main.SliderBalance.drag(0);
    EXPECT_EQ(gain(platform::AudioEngine::BASS_ATTRIB_PAN), 0);
}

TEST_F(WholeProgram, previewOnTheControlPathGoesToTheControl)
{
    program.state().path.ripEngineMode = 1;
    main.list1.setCursor(0);
    press(state::playButton);
    press(state::nextButton);
    press(state::pauseButton);
    press(state::playButton);
    press(state::stopButton);
    press(state::ejectButton);
    EXPECT_THAT(host.acd.calls, testing::ElementsAre("PlayTrack(1, 0, -1)", "AbortRip()", "PlayTrack(2, 0, -1)",
                                                     "PausePlay()", "ResumePlay()", "StopPlay()", "StopPlay()",
                                                     "AbortRip()", "AbortRip()", "Eject()"));
}

TEST_F(WholeProgram, runThatEncodesHasTheFilesOfItsTracksTagged)
{
    state::RipSettings& settings = program.state().settings;
    settings.encodeWanted = 1;
    settings.encodeSingle = 1;
    settings.deleteWav = 0;
    program.state().disc.discGenre = L"jazz";
    for (const wchar_t* name : {L"Dawn", L"Noon", L"Dusk"})
        host.files.put(std::wstring(L"C:\\CDTONQUAY\\datacd\\") + name + L".mp3", "sound");
    main.list1.select(1, false);
    // The user has opened the tagger for another purpose, and forgotten it.
    main.image10[state::discTagsKey].mouseUp(MouseButton::left);
    const state::Id3autoControls& tagger = program.forms().controlsOf<state::Id3autoControls>();
    EXPECT_EQ(tagger.form.state(), controls::Form::State::shown);
    EXPECT_EQ(tagger.Text2.text.get(), L"Ann");
    press(state::startButton);

    const auto field = [](const std::string& text) { return text + std::string(30 - text.size(), '\0'); };
    const auto tagOf = [&](const std::string& title, char track) {
        return "TAG" + field(title) + field("Ann") + field("Light") + std::string(4 + 28 + 1, '\0') + track + '\x08';
    };
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\datacd\\Dawn.mp3"), "sound" + tagOf("Dawn", 1));
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\datacd\\Noon.mp3"), "sound") << "no track of this run";
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\datacd\\Dusk.mp3"), "sound" + tagOf("Dusk", 3));
    EXPECT_FALSE(tagger.form.isLoaded());
    EXPECT_EQ(program.state().flags.autoTagBusy, 0);
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
}

TEST_F(WholeProgram, twoProgramsLiveSideBySide)
{
    test::FakeHost other;
    Program beside{other.platform()};
    beside.start(L"C:\\CDTONQUAY");
    press(state::startButton);
    EXPECT_THAT(other.files.contents(L"C:\\CDTONQUAY\\datacd\\Dawn.wav"), std::nullopt);
    expectWhole(L"Dawn", 0, 12);
}

}
}
