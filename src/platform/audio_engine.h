#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace tonquay::platform {

/// Plays and decodes the tracks of audio discs. Drives and tracks count from 0. Sound is 44100 Hz, 16 bit signed
/// little-endian, two channels, left first (Red Book): 176400 bytes are one second.
///
/// The calls keep the names they are known by. All belong to the logic's thread, and sync callbacks arrive on it too,
/// inside a pass through the event loop; those of a stream that was stopped, freed or replaced do not arrive.
///
/// A handle that names no stream (0, freed, ended) is refused without harm: not active, level -1, length -1,
/// position 0, seconds 0, false everywhere else.
class AudioEngine {
public:
    using Handle = std::uint32_t;
    using SyncCallback = std::function<void(std::uint32_t user)>;

    static constexpr std::uint32_t BASS_STREAM_AUTOFREE = 0x40000; ///< freed by its end and by a stop
    static constexpr std::uint32_t BASS_STREAM_DECODE = 0x200000;  ///< for BASS_ChannelGetData, never heard
    static constexpr std::uint32_t BASS_SAMPLE_8BITS = 1;

    static constexpr std::uint32_t BASS_ATTRIB_FREQ = 1; ///< Hz
    static constexpr std::uint32_t BASS_ATTRIB_VOL = 2;  ///< 0 to 100; -1 changes nothing
    static constexpr std::uint32_t BASS_ATTRIB_PAN = 3;  ///< -100 left to 100 right; -101 changes nothing

    static constexpr std::uint32_t BASS_SYNC_END = 2;
    static constexpr std::uint32_t BASS_SYNC_SLIDE = 5;
    static constexpr std::uint32_t BASS_SYNC_CD_ERROR = 1000;
    static constexpr std::uint32_t BASS_SYNC_ONETIME = 0x80000000;

    static constexpr std::uint32_t BASS_CDID_TEXT = 4;

    enum Active : std::uint32_t { stopped = 0, playing = 1, stalled = 2, paused = 3 };
    enum DoorAction : std::uint32_t { closeDoor = 0, openDoor = 1, lockDoor = 2, unlockDoor = 3 };

    struct ChannelInfo {
        std::uint32_t freq = 0;
        std::uint32_t chans = 0;
        std::uint32_t flags = 0;
    };

    /// What a drive says of itself. Texts are UTF-8.
    struct DriveInfo {
        std::string vendor;
        std::string product;
        std::string rev;
        std::int32_t letter = 0;    ///< 0 is "A"
        std::uint32_t rwflags = 0;  ///< one bit an ability
        std::int32_t canopen = 0;   ///< 1: the door can be opened and closed
        std::int32_t canlock = 0;   ///< 1: the door can be locked
        std::uint32_t maxspeed = 0; ///< Kbps; 0 when the drive does not tell
        std::uint32_t cache = 0;    ///< kilobytes; 0 when the drive does not tell
    };

    virtual ~AudioEngine() = default;

    /// Gets ready; the sound device itself is opened by the first stream that plays. `device` 1 is the default one;
    /// window and class id mean nothing here.
    virtual bool BASS_Init(std::int32_t device, std::uint32_t frequency, std::uint32_t flags, std::uintptr_t window,
                           std::uintptr_t classId) = 0;
    virtual bool BASS_Stop() = 0; ///< silences all playback
    virtual bool BASS_Free() = 0; ///< frees every stream and the device

    /// The volume that streams start with, 0 to 100.
    virtual float BASS_GetVolume() = 0;

    /// False past the last drive. Never blocks: it answers from what the watch of the drive last saw.
    virtual bool BASS_CD_GetInfo(std::uint32_t drive, DriveInfo& info) = 0;
    virtual bool BASS_CD_IsReady(std::uint32_t drive) = 0;           ///< an audio disc is in and can be read
    virtual std::int32_t BASS_CD_GetTracks(std::uint32_t drive) = 0; ///< data tracks included; -1: no disc
    virtual std::int32_t BASS_CD_GetTrackLength(std::uint32_t drive, std::uint32_t track) = 0; ///< bytes; -1: data
    /// The disc's CD-Text as "KEYn=text" strings, each ended by NUL, the last one empty; empty when there is none.
    virtual std::string BASS_CD_GetID(std::uint32_t drive, std::uint32_t id) = 0;
    virtual bool BASS_CD_Door(std::uint32_t drive, std::uint32_t action) = 0;
    virtual bool BASS_CD_DoorIsOpen(std::uint32_t drive) = 0;
    virtual bool BASS_CD_DoorIsLocked(std::uint32_t drive) = 0;

    /// A stream of one track; 0 when there is no such drive, disc or audio track. Asking
    /// for a decode stream frees every playback stream, whatever comes of it.
    virtual Handle BASS_CD_StreamCreate(std::uint32_t drive, std::int32_t track, std::uint32_t flags) = 0;
    virtual bool BASS_StreamFree(Handle stream) = 0;

    virtual bool BASS_ChannelPlay(Handle stream, bool restart) = 0;
    virtual bool BASS_ChannelPause(Handle stream) = 0;
    virtual bool BASS_ChannelStop(Handle stream) = 0;
    /// For a decode stream: playing until the read that returns its last byte, stopped after it or after a failed read.
    virtual Active BASS_ChannelIsActive(Handle stream) = 0;

    virtual bool BASS_ChannelGetInfo(Handle stream, ChannelInfo& info) = 0;
    virtual bool BASS_ChannelGetAttribute(Handle stream, std::uint32_t attribute, float& value) = 0;
    virtual bool BASS_ChannelSetAttribute(Handle stream, std::uint32_t attribute, float value) = 0;

    /// Peaks of the block that sounds now, or that a decode stream delivered last: left in the low word, right in the
    /// high word, each 0 to 32768. -1 for no stream. Consumes nothing.
    virtual std::int32_t BASS_ChannelGetLevel(Handle stream) = 0;

    /// Bytes, `mode` 0. The position of a decode stream is the number of bytes delivered.
    virtual std::int64_t BASS_ChannelGetLength(Handle stream, std::uint32_t mode) = 0;
    virtual std::int64_t BASS_ChannelGetPosition(Handle stream, std::uint32_t mode) = 0;
    virtual bool BASS_ChannelSetPosition(Handle stream, std::int64_t position, std::uint32_t mode) = 0;
    virtual double BASS_ChannelBytes2Seconds(Handle stream, std::int64_t position) = 0;

    /// Delivers the next bytes of a decode stream: as many as fit, fewer at the end of the track or before a sector
    /// that cannot be read. -1 when none could be read. Blocks until they are there.
    virtual std::int32_t BASS_ChannelGetData(Handle stream, std::span<std::byte> buffer) = 0;

    /// Has `callback` called with `user` when the stream reaches its end or fails. 0 when refused.
    virtual std::uint32_t BASS_ChannelSetSync(Handle stream, std::uint32_t type, std::int64_t param,
                                              SyncCallback callback, std::uint32_t user) = 0;
};

}
