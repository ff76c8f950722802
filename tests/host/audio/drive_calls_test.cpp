#include "fake_drives.h"

#include "host/audio/host_audio_engine.h"

#include <array>
#include <gtest/gtest.h>

namespace tonquay::host::test {
namespace {

using Engine = platform::AudioEngine;
using namespace std::string_literals;

class DriveCalls : public testing::Test {
protected:
    MemoryDrives drives;
    TestLoop loop;
    TestLog log;
    HostAudioEngine engine{drives, loop, log};
};

TEST_F(DriveCalls, tellWhatTheDriveSaysOfItself)
{
    drives.drives.emplace_back();
    platform::DriveDescription& burner = drives.drives.emplace_back().about;
    burner.letter = L'E';
    burner.vendor = "Other";
    burner.product = "Burner";
    burner.revision = "2b";
    burner.abilities = 0x1000003;
    burner.canOpen = true;
    burner.canLock = true;
    burner.maxSpeedKbps = 8467;
    burner.cacheKb = 512;
    Engine::DriveInfo info;
    ASSERT_TRUE(engine.BASS_CD_GetInfo(1, info));
    EXPECT_EQ(info.vendor + "|" + info.product + "|" + info.rev, "Other|Burner|2b");
    EXPECT_EQ(info.letter, 4);
    EXPECT_EQ(info.rwflags, 0x1000003U);
    EXPECT_EQ(info.canopen, 1);
    EXPECT_EQ(info.canlock, 1);
    EXPECT_EQ(info.maxspeed, 8467U);
    EXPECT_EQ(info.cache, 512U);
    ASSERT_TRUE(engine.BASS_CD_GetInfo(0, info));
    EXPECT_EQ(info.canopen + info.canlock, 0);
    EXPECT_FALSE(engine.BASS_CD_GetInfo(2, info));
}

TEST_F(DriveCalls, tellTheTracksOfTheDiscThatIsIn)
{
    auto& drive = drives.drives.emplace_back();
    EXPECT_FALSE(engine.BASS_CD_IsReady(0));
    EXPECT_EQ(engine.BASS_CD_GetTracks(0), -1);
    EXPECT_EQ(engine.BASS_CD_GetTrackLength(0, 0), -1);

    drive.contents = std::make_shared<DiscContents>(std::vector{-100, 75, 80});
    EXPECT_TRUE(engine.BASS_CD_IsReady(0));
    EXPECT_EQ(engine.BASS_CD_GetTracks(0), 3);
    EXPECT_EQ(engine.BASS_CD_GetTrackLength(0, 0), -1) << "data";
    EXPECT_EQ(engine.BASS_CD_GetTrackLength(0, 1), 176400);
    EXPECT_EQ(engine.BASS_CD_GetTrackLength(0, 3), -1) << "past the last";

    drive.open = true;
    EXPECT_FALSE(engine.BASS_CD_IsReady(0));
    EXPECT_EQ(engine.BASS_CD_GetTracks(0), -1);
    EXPECT_FALSE(engine.BASS_CD_IsReady(7));
    EXPECT_EQ(engine.BASS_CD_GetTracks(7), -1);
}

TEST_F(DriveCalls, doorActionsReachTheDrive)
{
    drives.drives.emplace_back();
    struct Case {
        std::uint32_t action;
        bool answer;
        bool open;
        bool locked;
    };
    const Case cases[] = {
        {Engine::lockDoor, true, false, true},    {Engine::openDoor, false, false, true},
        {Engine::unlockDoor, true, false, false}, {Engine::openDoor, true, true, false},
        {Engine::closeDoor, true, false, false},  {4, false, false, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(engine.BASS_CD_Door(0, c.action), c.answer) << c.action;
        EXPECT_EQ(engine.BASS_CD_DoorIsOpen(0), c.open) << c.action;
        EXPECT_EQ(engine.BASS_CD_DoorIsLocked(0), c.locked) << c.action;
    }
    EXPECT_FALSE(engine.BASS_CD_Door(1, Engine::unlockDoor));
    EXPECT_FALSE(engine.BASS_CD_DoorIsOpen(1));
}

TEST_F(DriveCalls, namesComeAsABlockOfStrings)
{
    struct Case {
        const char* what;
        std::wstring artist;
        std::wstring album;
        std::vector<std::wstring> titles;
        std::string block;
    };
    const Case cases[] = {
        {"none", L"", L"", {L"", L""}, ""},
        {"disc and tracks",
         L"Ann",
         L"Caf\u00e9",
         {L"One", L"", L"Three=3"},
         "TITLE0=Caf\xc3\xa9\0PERFORMER0=Ann\0TITLE1=One\0TITLE3=Three=3\0\0"s},
        {"a NUL ends its text", L"", L"A\0B"s, {}, "TITLE0=A\0\0"s},
        {"only tracks", L"", L"", {L"x"}, "TITLE1=x\0\0"s},
    };
    auto& drive = drives.drives.emplace_back();
    for (const Case& c : cases) {
        drive.discNames.artist = c.artist;
        drive.discNames.album = c.album;
        drive.discNames.titles = c.titles;
        EXPECT_EQ(engine.BASS_CD_GetID(0, Engine::BASS_CDID_TEXT), c.block) << c.what;
    }
    EXPECT_EQ(engine.BASS_CD_GetID(0, 1), "") << "other identifiers are not known";
}

TEST_F(DriveCalls, streamsComeOnlyFromAudioTracksThatAreThere)
{
    drives.drives.emplace_back().contents = std::make_shared<DiscContents>(std::vector{-100, 75});
    drives.drives.emplace_back();
    EXPECT_EQ(engine.BASS_CD_StreamCreate(0, 1, 0), 0U) << "before BASS_Init";
    EXPECT_TRUE(engine.BASS_Init(1, 44100, 0, 0, 0));
    EXPECT_FALSE(engine.BASS_Init(1, 44100, 0, 0, 0));
    for (const std::uint32_t flags : {Engine::BASS_STREAM_AUTOFREE, Engine::BASS_STREAM_DECODE}) {
        EXPECT_NE(engine.BASS_CD_StreamCreate(0, 1, flags), 0U);
        EXPECT_EQ(engine.BASS_CD_StreamCreate(0, 0, flags), 0U) << "data";
        EXPECT_EQ(engine.BASS_CD_StreamCreate(0, 2, flags), 0U) << "past the last";
        EXPECT_EQ(engine.BASS_CD_StreamCreate(0, -1, flags), 0U) << "no row chosen";
        EXPECT_EQ(engine.BASS_CD_StreamCreate(1, 0, flags), 0U) << "no disc";
        EXPECT_EQ(engine.BASS_CD_StreamCreate(2, 0, flags), 0U) << "no drive";
    }
}

TEST_F(DriveCalls, aHandleThatNamesNoStreamIsRefusedWithoutHarm)
{
    drives.drives.emplace_back().contents = std::make_shared<DiscContents>(std::vector{75});
    engine.BASS_Init(1, 44100, 0, 0, 0);
    const auto freed = engine.BASS_CD_StreamCreate(0, 0, Engine::BASS_STREAM_DECODE);
    ASSERT_TRUE(engine.BASS_StreamFree(freed));
    const auto other = engine.BASS_CD_StreamCreate(0, 0, Engine::BASS_STREAM_DECODE);
    EXPECT_NE(freed, other) << "not handed out again";

    for (const Engine::Handle handle : {Engine::Handle{0}, freed, Engine::Handle{4711}}) {
        Engine::ChannelInfo info;
        float value = -5;
        std::array<std::byte, 8> buffer{};
        EXPECT_EQ(engine.BASS_ChannelIsActive(handle), Engine::stopped);
        EXPECT_EQ(engine.BASS_ChannelGetLevel(handle), -1);
        EXPECT_EQ(engine.BASS_ChannelGetLength(handle, 0), -1);
        EXPECT_EQ(engine.BASS_ChannelGetPosition(handle, 0), 0);
        EXPECT_EQ(engine.BASS_ChannelBytes2Seconds(handle, 176400), 0);
        EXPECT_EQ(engine.BASS_ChannelGetData(handle, buffer), -1);
        EXPECT_EQ(engine.BASS_ChannelSetSync(
                      handle, Engine::BASS_SYNC_END, 0, [](std::uint32_t) {}, 0),
                  0U);
        EXPECT_FALSE(engine.BASS_ChannelPlay(handle, true));
        EXPECT_FALSE(engine.BASS_ChannelPause(handle));
        EXPECT_FALSE(engine.BASS_ChannelStop(handle));
        EXPECT_FALSE(engine.BASS_StreamFree(handle));
        EXPECT_FALSE(engine.BASS_ChannelSetPosition(handle, 0, 0));
        EXPECT_FALSE(engine.BASS_ChannelGetInfo(handle, info));
        EXPECT_FALSE(engine.BASS_ChannelGetAttribute(handle, Engine::BASS_ATTRIB_VOL, value));
        EXPECT_FALSE(engine.BASS_ChannelSetAttribute(handle, Engine::BASS_ATTRIB_VOL, 1));
        EXPECT_EQ(value, -5);
    }
}

}
}
