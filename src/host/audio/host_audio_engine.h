#pragma once

#include "host/audio/sound_output.h"
#include "host/audio/stream.h"
#include "host/audio/thread_reaper.h"
#include "host/drives/drive_set.h"
#include "platform/audio_engine.h"
#include "platform/decode_report.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"

#include <functional>
#include <map>
#include <memory>

namespace tonquay::host {

/// The audio engine of this system: tracks of the drives' discs, heard through the sound device.
///
/// Streams are made after BASS_Init only. Each has a reader of its own, so several go on beside each other; only,
/// asking for a decode stream frees all that plays. Playing streams sound together, added and cut off at 16 bits.
/// Volume is linear, 50 being half the amplitude, and pan turns the far side down; at 100 and 0 the samples are heard
/// as they are on the disc. Both are cut to their ranges. Levels are those of the disc, whatever volume and pan say.
///
/// A playing stream ends, with BASS_SYNC_END, when its last sample was heard, or, with BASS_SYNC_CD_ERROR, when the
/// last one was heard that could be read. BASS_SYNC_SLIDE is accepted and never comes, since nothing slides.
///
/// The engine may be destroyed at any time by the logic's thread: nothing that it posted does anything afterwards.
/// Neither that nor freeing or stopping a stream waits for a drive longer than half a second.
class HostAudioEngine : public platform::AudioEngine {
public:
    using DecodeEndCall = std::function<void(const platform::DecodeReport&)>;

    HostAudioEngine(DriveSet& drives, platform::EventLoop& loop, platform::Diagnostics& log);
    ~HostAudioEngine() override; ///< tells nobody of the streams that it ends
    HostAudioEngine(const HostAudioEngine&) = delete;
    HostAudioEngine& operator=(const HostAudioEngine&) = delete;

    /// `call` is made once for each decode stream, by the BASS_ call that ended it: the read that returned its last
    /// byte or failed, or else the stop or the freeing.
    void onDecodeEnd(DecodeEndCall call) { onDecodeEnd_ = std::move(call); }

    [[nodiscard]] bool soundDeviceIsOpen() const { return output_.isOpen(); }

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

    /// Playing streams only; `param` means nothing.
    std::uint32_t BASS_ChannelSetSync(Handle stream, std::uint32_t type, std::int64_t param, SyncCallback callback,
                                      std::uint32_t user) override;

private:
    struct Source;

    Drive* driveAt(std::uint32_t drive);
    std::shared_ptr<Stream> find(Handle stream) const;
    Handle newHandle();
    std::shared_ptr<Stream> makeStream(Handle handle, const Source& source, std::uint32_t flags);
    void endPlayback();
    void playbackEnded(Handle handle, std::uint32_t generation);
    void decodeEnded(const platform::DecodeReport& report);

    DriveSet& drives_;
    platform::EventLoop& loop_;
    platform::Diagnostics& log_;
    DecodeEndCall onDecodeEnd_;
    bool ready_ = false;
    Handle lastHandle_ = 0;
    // In the order of need: streams use the output, and give their threads to the reaper.
    ThreadReaper reaper_;
    SoundOutput output_;
    std::map<Handle, std::shared_ptr<Stream>> streams_;
    std::shared_ptr<const bool> alive_; ///< what was posted holds it weakly
};

}
