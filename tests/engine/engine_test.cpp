#include "engine/engine_form.h"
#include "engine/level_word.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::engine {
namespace {

using platform::AudioEngine;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr std::int32_t second = 176400;

struct Engine : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    EngineForm engine{state, forms, platform};
    state::RipdeckControls& main = forms.ripdeck();

    state::Cdrip1Controls& load(const std::vector<std::int32_t>& trackBytes = {20 * second, 30 * second, 10 * second})
    {
        host.engine.insertDisc(0, trackBytes);
        return forms.cdrip1();
    }

    const std::wstring target = L"C:\\CDTONQUAY\\out.wav";
    std::string extract(std::int32_t track)
    {
        state.run.ripTargetPath = target;
        engine.ExtractAudioTrackToWav(track);
        return host.files.contents(target).value_or("no file");
    }
};

std::uint32_t field(const std::string& file, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(file.at(offset + i))) << (8 * i);
    return value;
}

TEST_F(Engine, loadListsDrivesAndTracksAndShowsTheStartVolume)
{
    host.engine.drives.resize(2);
    host.engine.drives[1].info = {"TONQ", "SIM", "2", 4, 0x1000001, 0, 0, 1411200, 0};
    state::Cdrip1Controls& form = load();
    EXPECT_EQ(form.cmbCDDrives.row(0).text, L"D: MAKER MODEL 1.0");
    EXPECT_EQ(form.cmbCDDrives.row(1).text, L"E: TONQ SIM 2");
    EXPECT_EQ(form.lstTracks.rowCount(), 3);
    EXPECT_EQ(form.lstTracks.row(1).text, L"02\t\t[00:30]");
    EXPECT_EQ(state.disc.trackSeconds(2), 30);
    EXPECT_EQ(form.SliderVolume.value(), -50);
    EXPECT_EQ(form.form.width.get(), 7515);
    EXPECT_TRUE(form.tmrPlaybackPosition.enabled());

    form.cmbCDDrives.setIndex(1);
    EXPECT_EQ(form.lstTracks.rowCount(), 0) << "no disc in that drive";
    EXPECT_EQ(form.chkRWFlags[0].value(), 1);
    EXPECT_EQ(form.chkRWFlags[1].value(), 0);
    EXPECT_EQ(form.chkRWFlags[9].value(), 1);
    EXPECT_FALSE(form.cmdButton[state::engineOpen].enabled);
    EXPECT_FALSE(form.cmdButton[state::engineLock].enabled);
    EXPECT_EQ(form.lblMaxReadSpeed.caption.get(), L"1,411,200 Kbps");
    EXPECT_EQ(form.lblCacheSize.caption.get(), L" Kbps");
}

TEST_F(Engine, dataTrackGetsNoRowButKeepsItsNumber)
{
    host.engine.insertDisc(0, {20 * second, 30 * second});
    host.engine.drives[0].tracks[0].audio = false;
    EXPECT_EQ(forms.cdrip1().lstTracks.rowCount(), 1);
    EXPECT_EQ(forms.cdrip1().lstTracks.row(0).text, L"02\t\t[00:30]");
}

TEST_F(Engine, playTrackMakesTheEngineCallsInTheirOrder)
{
    load();
    host.engine.calls.clear();
    engine.playback().PlayTrack(1);
    EXPECT_THAT(host.engine.calls,
                ElementsAre("BASS_ChannelStop(0)", "BASS_CD_StreamCreate(0, 1, 262144)",
                            "BASS_ChannelSetAttribute(1, 2, 50)", "BASS_ChannelSetAttribute(1, 3, -101)",
                            "BASS_ChannelPlay(1, 1)", "BASS_ChannelSetSync(1, 2147483650, 0, 1)",
                            "BASS_ChannelSetSync(1, 2147484648, 0, 0)", "BASS_ChannelSetSync(1, 2147483653, 0, 1)"));
    host.engine.calls.clear();
    engine.playback().PlayTrack(-1);
    EXPECT_EQ(state.engine.audioStream, 0U);
    EXPECT_THAT(host.engine.callsOf("BASS_ChannelSetAttribute"), IsEmpty());
}

TEST_F(Engine, endOfATrackStartsTheNextAndTheLastOneTheFirst)
{
    state::Cdrip1Controls& form = load({2 * second, second});
    form.lstTracks.setIndex(0);
    host.loop.runFor(2500ms);
    EXPECT_EQ(form.lstTracks.index(), 1);
    EXPECT_EQ(host.engine.BASS_ChannelGetLength(state.engine.audioStream, 0), second);
    host.loop.runFor(1200ms);
    EXPECT_EQ(form.lstTracks.index(), 0);
    EXPECT_EQ(host.engine.BASS_ChannelIsActive(state.engine.audioStream), AudioEngine::playing);
}

TEST_F(Engine, failedPlaybackSaysSoAndEmptiesTheList)
{
    state::Cdrip1Controls& form = load();
    form.lstTracks.setIndex(0);
    // The door is open, so that the list stays empty.
    host.engine.fireSync(state.engine.audioStream, AudioEngine::BASS_SYNC_CD_ERROR);
    host.engine.drives[0].open = true;
    host.loop.pass();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].title, L"Error");
    EXPECT_EQ(host.dialogs.boxes[0].icon, platform::Dialogs::Icon::stop);
    EXPECT_EQ(form.lstTracks.rowCount(), 0);
}

TEST_F(Engine, slidersAndLabelActOnTheStreamAndShowTheirValue)
{
    state::Cdrip1Controls& form = load();
    host.engine.calls.clear();
    form.SliderVolume.drag(-74);
    EXPECT_EQ(form.lblVolume.caption.get(), L"Volume : 7");
    EXPECT_THAT(host.engine.callsOf("BASS_ChannelSetAttribute"), IsEmpty()) << "no stream yet";
    form.SliderVolume.drag(-65);
    EXPECT_EQ(form.lblVolume.caption.get(), L"Volume : 6") << "ties to even";

    engine.playback().PlayTrack(0);
    host.engine.calls.clear();
    form.SliderVolume.drag(-100);
    form.SliderBalance.drag(-30);
    form.lblVolume.doubleClick();
    EXPECT_EQ(form.lblBalance.caption.get(), L"-30");
    EXPECT_THAT(host.engine.calls,
                ElementsAre("BASS_ChannelSetAttribute(1, 2, 100)", "BASS_ChannelSetAttribute(1, 3, -101)",
                            "BASS_ChannelSetAttribute(1, 2, -1)", "BASS_ChannelSetAttribute(1, 3, -30)",
                            "BASS_ChannelSetAttribute(1, 2, 0)"));
}

TEST_F(Engine, timerMovesBarsTextsAndMetersOfTheMainWindow)
{
    state::Cdrip1Controls& form = load();
    engine.playback().PlayTrack(0);
    host.engine.level = 0x3A98 << 16 | 0x7530; // right 15000, left 30000
    state.run.ripProgressTotal = 3;
    state.run.ripProgressNumber = 3;
    host.loop.runFor(9s);
    EXPECT_EQ(main.Trackprogress.value.get(), 45);
    EXPECT_EQ(main.Label6[state::trackPercentText].caption.get(), L" 45%");
    EXPECT_EQ(main.Totalprogress.value.get(), 81) << "cut, not rounded";
    EXPECT_EQ(main.lblTrackTime.caption.get(), L"00:09");
    EXPECT_EQ(main.lblTrackTot.caption.get(), L"00:20");
    EXPECT_NEAR(form.SliderPosition.value(), 4500, 30);
    EXPECT_DOUBLE_EQ(main.picVUMeter[0].level().value(), 1.0);
    EXPECT_DOUBLE_EQ(main.picVUMeter[1].level().value(), 0.5);
    EXPECT_THAT(host.engine.callsOf("BASS_ChannelSetPosition"), IsEmpty()) << "a shown position must not seek";

    form.SliderPosition.mouseDown();
    host.loop.runFor(2s);
    EXPECT_EQ(main.Trackprogress.value.get(), 45) << "left alone while it is dragged";
    form.SliderPosition.mouseUp();
    form.SliderPosition.drag(7500);
    form.SliderPosition.click();
    EXPECT_EQ(host.engine.callsOf("BASS_ChannelSetPosition").back(), "BASS_ChannelSetPosition(1, 2646000, 0)");

    form.cmdButton[state::engineStop].press();
    host.loop.runFor(100ms);
    EXPECT_FALSE(main.picVUMeter[0].level());
    EXPECT_EQ(form.SliderPosition.value(), 0);
}

TEST_F(Engine, levelWordsAreUnsigned)
{
    const auto level = static_cast<std::int32_t>(0x80004000);
    EXPECT_EQ(loWord(level), 0x4000);
    EXPECT_EQ(hiWord(level), 0x8000);
}

TEST_F(Engine, timerFollowsTheDoor)
{
    state::Cdrip1Controls& form = load();
    engine.playback().PlayTrack(0);
    form.cmdButton[state::engineLock].press();
    host.loop.runFor(60ms);
    EXPECT_EQ(form.chkRWFlags[state::lockedFlag].value(), 1);
    form.cmdButton[state::engineUnlock].press();
    host.engine.drives[0].open = true;
    host.loop.runFor(60ms);
    EXPECT_EQ(form.chkRWFlags[state::openFlag].value(), 1);
    EXPECT_EQ(form.lstTracks.rowCount(), 0);
    EXPECT_EQ(host.engine.BASS_ChannelIsActive(state.engine.audioStream), AudioEngine::stopped);
    form.cmdButton[state::engineClose].press();
    host.loop.runFor(60ms);
    EXPECT_EQ(form.lstTracks.rowCount(), 3);
}

TEST_F(Engine, timerSlowsDownOnAnIdleDiscAndIsBackWithTheFirstMove)
{
    state::Cdrip1Controls& form = load();
    host.loop.runFor(5s);
    const auto ticksIn = [&](std::chrono::milliseconds time) {
        host.engine.calls.clear();
        host.loop.runFor(time);
        return host.engine.callsOf("BASS_CD_DoorIsOpen").size();
    };
    EXPECT_EQ(ticksIn(10s), 20U);
    form.cmdButton[state::engineUnlock].press();
    EXPECT_EQ(ticksIn(1s), 20U) << "a press that moves nothing may be followed by one that does";
    host.loop.runFor(5s);
    form.lstTracks.setIndex(0);
    EXPECT_EQ(ticksIn(1s), 20U);
    form.cmdButton[state::engineStop].press();
    host.loop.runFor(5s);
    host.engine.drives[0].open = true;
    host.loop.runFor(500ms);
    EXPECT_EQ(form.lstTracks.rowCount(), 0);
    host.engine.drives[0].open = false;
    host.loop.runFor(50ms);
    EXPECT_EQ(form.lstTracks.rowCount(), 3);
}

TEST_F(Engine, extractionWritesACanonicalFileWithEveryByte)
{
    struct Case {
        const char* what;
        std::int32_t bytes;
    };
    const Case cases[] = {
        {"a multiple of the block", 20000 * 588}, {"a short last block", 2352 * 101}, {"less than a block", 2352}};
    for (const Case& c : cases) {
        host.files.put(target, "");
        ASSERT_TRUE(host.files.remove(target));
        load({c.bytes});
        host.loop.runFor(100ms);
        const std::string file = extract(0);
        const auto size = static_cast<std::size_t>(c.bytes);
        ASSERT_EQ(file.size(), 44 + size) << c.what;
        EXPECT_EQ(file.substr(0, 4) + file.substr(8, 8) + file.substr(36, 4), "RIFFWAVEfmt data") << c.what;
        EXPECT_EQ(field(file, 4), size + 36) << c.what;
        EXPECT_EQ(field(file, 16), 16U);
        EXPECT_EQ(field(file, 20), 0x00020001U) << "PCM, 2 channels";
        EXPECT_EQ(field(file, 24), 44100U);
        EXPECT_EQ(field(file, 28), 176400U);
        EXPECT_EQ(field(file, 32), 0x00100004U) << "block align 4, 16 bits";
        EXPECT_EQ(field(file, 40), size) << c.what;
        EXPECT_TRUE(file.substr(44) == test::FakeAudioEngine::pattern(0, c.bytes)) << c.what;
    }
    EXPECT_EQ(host.engine.streamCount(), 0U) << "nothing is left open";
}

TEST_F(Engine, extractionLocksTheDoorAndDisablesTheFormWhileItRuns)
{
    state::Cdrip1Controls& form = load();
    bool lockedInside = false;
    bool enabledInside = true;
    auto pointerInside = platform::Dialogs::Pointer::normal;
    host.loop.onTurn = [&] {
        lockedInside = host.engine.drives[0].locked;
        enabledInside = form.form.enabled;
        pointerInside = host.dialogs.pointer;
    };
    extract(0);
    EXPECT_TRUE(lockedInside);
    EXPECT_FALSE(enabledInside);
    EXPECT_EQ(pointerInside, platform::Dialogs::Pointer::busy);
    EXPECT_FALSE(host.engine.drives[0].locked);
    EXPECT_TRUE(form.form.enabled);
    EXPECT_EQ(host.dialogs.pointer, platform::Dialogs::Pointer::normal);
}

TEST_F(Engine, nothingPressedDuringAnExtractionChangesASample)
{
    state::Cdrip1Controls& form = load();
    host.loop.onTurn = [&] {
        engine.playback().PlayTrack(1);
        engine.playback().pauseOrResume();
        engine.playback().seek(0.1);
        engine.playback().stop();
        form.lstTracks.setIndex(2);
        form.SliderVolume.drag(-10);
        engine.ExtractAudioTrackToWav(1);
    };
    EXPECT_TRUE(extract(0).substr(44) == test::FakeAudioEngine::pattern(0, 20 * second));
}

TEST_F(Engine, extractionThatFailsLeavesNoFileThatLooksWhole)
{
    load();
    EXPECT_EQ(extract(-1), "no file");
    EXPECT_EQ(extract(3), "no file");

    host.engine.drives[0].tracks[0].unreadableFrom = 50000;
    const std::string cut = extract(0);
    EXPECT_EQ(field(cut, 40), 0U);
    EXPECT_TRUE(cut.substr(44) == test::FakeAudioEngine::pattern(0, 20 * second).substr(0, 50000));
    EXPECT_FALSE(host.engine.drives[0].locked);

    host.files.fail(test::FakeFileSystem::Operation::write, target, base::Failure::Kind::full, 5);
    EXPECT_EQ(field(extract(1), 40), 0U);
    host.files.heal(test::FakeFileSystem::Operation::write, target);
    host.files.fail(test::FakeFileSystem::Operation::seek, target, base::Failure::Kind::full);
    EXPECT_EQ(field(extract(1), 40), 0U) << "a gathered write that failed comes out before the sizes";
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    EXPECT_EQ(host.log.lines.size(), 5U) << "one line for each";
}

TEST_F(Engine, longerOldFileKeepsItsTail)
{
    load({2352 * 2});
    host.files.put(target, std::string(10000, 'x'));
    const std::string file = extract(0);
    EXPECT_EQ(file.size(), 10000U);
    EXPECT_EQ(field(file, 40), 4704U);
    EXPECT_EQ(file.substr(44 + 4704), std::string(10000 - 44 - 4704, 'x'));
}

TEST_F(Engine, driveInfoKeyTogglesTheWidth)
{
    state::Cdrip1Controls& form = load();
    form.cmdButton[state::engineDriveInfo].press();
    EXPECT_EQ(form.form.width.get(), 11490);
    EXPECT_EQ(form.cmdButton[state::engineDriveInfo].caption.get(), L"&Drive Info <<");
}

TEST_F(Engine, closingUnlocksEveryDrive)
{
    host.engine.drives.resize(3);
    load().form.unload();
    EXPECT_THAT(host.engine.callsOf("BASS_CD_Door("),
                ElementsAre("BASS_CD_Door(0, 3)", "BASS_CD_Door(1, 3)", "BASS_CD_Door(2, 3)"));
    EXPECT_EQ(host.engine.calls.back(), "BASS_Free()");
}

}
}
