#pragma once

#include "platform/audio_engine.h"
#include "support/fake_clock.h"
#include "support/fake_event_loop.h"

#include <map>
#include <string>
#include <vector>

namespace tonquay::test {

/// Drives and discs out of thin air. The sound of a track is a fixed pattern that differs from track to track, so a
/// file that holds a wrong, shifted or repeated block is seen. Playback moves with the fake clock.
class FakeAudioEngine final : public platform::AudioEngine {
public:
    struct Track {
        std::int32_t bytes = 0; ///< 176400 are one second
        bool audio = true;
        std::int64_t unreadableFrom = -1; ///< reads give nothing from this byte on; -1: all can be read
    };
    struct Drive {
        DriveInfo info{"MAKER", "MODEL", "1.0", 3, 0, 1, 1, 0, 0};
        std::vector<Track> tracks; ///< none: no disc
        std::string cdText;
        bool open = false;
        bool locked = false;
        bool doorWorks = true;
    };

    FakeAudioEngine(FakeClock& clock, FakeEventLoop& loop) : clock_(clock), loop_(loop) {}

    bool BASS_Init(std::int32_t device, std::uint32_t frequency, std::uint32_t flags, std::uintptr_t window,
                   std::uintptr_t classId) override;
    bool BASS_Stop() override;
    bool BASS_Free() override;
    float BASS_GetVolume() override;
    bool BASS_CD_GetInfo(std::uint32_t drive, DriveInfo& info) override;
    bool BASS_CD_IsReady(std::uint32_t drive) override;
    std::int32_t BASS_CD_GetTracks(std::uint32_t drive) override;
    std::int32_t BASS_CD_GetTrackLength(std::uint32_t drive, std::uint32_t track) override;
    std::string BASS_CD_GetID(std::uint32_t drive, std::uint32_t id) override;
    bool BASS_CD_Door(std::uint32_t drive, std::uint32_t action) override;
    bool BASS_CD_DoorIsOpen(std::uint32_t drive) override;
    bool BASS_CD_DoorIsLocked(std::uint32_t drive) override;
    Handle BASS_CD_StreamCreate(std::uint32_t drive, std::int32_t track, std::uint32_t flags) override;
    bool BASS_StreamFree(Handle stream) override;
    bool BASS_ChannelPlay(Handle stream, bool restart) override;
    bool BASS_ChannelPause(Handle stream) override;
    bool BASS_ChannelStop(Handle stream) override;
    Active BASS_ChannelIsActive(Handle stream) override;
    bool BASS_ChannelGetInfo(Handle stream, ChannelInfo& info) override;
    bool BASS_ChannelGetAttribute(Handle stream, std::uint32_t attribute, float& value) override;
    bool BASS_ChannelSetAttribute(Handle stream, std::uint32_t attribute, float value) override;
    std::int32_t BASS_ChannelGetLevel(Handle stream) override;
    std::int64_t BASS_ChannelGetLength(Handle stream, std::uint32_t mode) override;
    std::int64_t BASS_ChannelGetPosition(Handle stream, std::uint32_t mode) override;
    bool BASS_ChannelSetPosition(Handle stream, std::int64_t position, std::uint32_t mode) override;
    double BASS_ChannelBytes2Seconds(Handle stream, std::int64_t position) override;
    std::int32_t BASS_ChannelGetData(Handle stream, std::span<std::byte> buffer) override;
    std::uint32_t BASS_ChannelSetSync(Handle stream, std::uint32_t type, std::int64_t param, SyncCallback callback,
                                      std::uint32_t user) override;

    /// The byte at a place of a track, tracks from 0.
    static std::byte patternByte(std::int32_t track, std::int64_t place);
    /// All of a track's sound as a string, for comparing with a file.
    static std::string pattern(std::int32_t track, std::int64_t bytes);

    /// Puts an audio disc into a drive, making the drive if need be: one audio track per length in bytes.
    void insertDisc(std::size_t drive, const std::vector<std::int32_t>& trackBytes);
    void removeDisc(std::size_t drive);

    /// Has a stream's syncs of a type called in the next pass: BASS_SYNC_END, BASS_SYNC_CD_ERROR, ...
    void fireSync(Handle stream, std::uint32_t type);

    /// The youngest stream that was made and not freed; 0 for none.
    Handle newest() const { return streams_.empty() ? 0 : streams_.rbegin()->first; }
    std::size_t streamCount() const { return streams_.size(); }

    /// Calls whose name begins with `name`.
    std::vector<std::string> callsOf(std::string_view name) const;

    std::vector<Drive> drives{Drive{}};
    /// Every call in order, as "BASS_CD_StreamCreate(0, 1, 262144)".
    std::vector<std::string> calls;
    bool initWorks = true;
    bool streamsWork = true;
    bool playWorks = true;
    std::int32_t level = 0x20001000; ///< of playback streams

private:
    struct Sync {
        std::uint32_t id = 0;
        std::uint32_t type = 0;
        SyncCallback callback;
        std::uint32_t user = 0;
    };
    struct Stream {
        std::uint32_t drive = 0;
        std::int32_t track = 0;
        std::uint32_t flags = 0;
        Active active = stopped;
        std::int64_t length = 0;
        std::int64_t position = 0;
        std::chrono::nanoseconds since{}; ///< when playback left `position`
        int turn = 0;                     ///< raised by whatever makes the planned end untrue
        std::int32_t level = 0;
        std::map<std::uint32_t, float> attributes;
        std::vector<Sync> syncs;
        bool decodes() const { return (flags & BASS_STREAM_DECODE) != 0; }
    };

    template <class... Arguments>
    void note(const char* name, Arguments... arguments);
    Drive* drive(std::uint32_t index) { return index < drives.size() ? &drives[index] : nullptr; }
    const Track* track(std::uint32_t drive, std::int64_t index) const;
    Stream* stream(Handle handle);
    std::int64_t playedTo(const Stream& stream) const;
    void hold(Stream& stream, Active active);
    void planEnd(Handle handle);
    void stopStream(Handle handle);

    FakeClock& clock_;
    FakeEventLoop& loop_;
    std::map<Handle, Stream> streams_;
    Handle lastHandle_ = 0;
    std::uint32_t lastSync_ = 0;
};

}
