#pragma once

#include "host/audio/read_ahead.h"
#include "host/audio/sound.h"
#include "platform/audio_engine.h"

namespace tonquay::host {

/// One entry of the engine's table: a track that is decoded or played. What a kind of stream cannot do, it refuses.
/// All calls belong to the logic's thread.
class Stream {
public:
    using Engine = platform::AudioEngine;

    Stream(std::uint32_t flags, std::int64_t length) : flags_(flags), length_(length) {}
    virtual ~Stream() = default;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    [[nodiscard]] std::uint32_t flags() const { return flags_; }
    [[nodiscard]] bool decodes() const { return (flags_ & Engine::BASS_STREAM_DECODE) != 0; }
    [[nodiscard]] bool autoFree() const { return (flags_ & Engine::BASS_STREAM_AUTOFREE) != 0; }
    [[nodiscard]] std::int64_t length() const { return length_; } ///< bytes

    virtual Engine::Active active() = 0;
    virtual std::int64_t position() = 0;
    virtual Peaks peaks() = 0;
    virtual void stop() = 0; ///< harmless on a stream that does not run

    virtual bool play(bool) { return false; }
    virtual bool pause() { return false; }
    virtual bool seek(std::int64_t) { return false; }
    virtual std::int32_t data(std::span<std::byte>) { return -1; }
    virtual std::uint32_t addSync(std::uint32_t, const Engine::SyncCallback&, std::uint32_t) { return 0; }

    /// The last byte was heard, or the last one that could be read: ends the stream and tells which. None when that
    /// word is from before a seek or a stop; then nothing ends.
    virtual ReadAhead::End finish(std::uint32_t) { return ReadAhead::End::none; }
    /// Calls the syncs of the end that finish() saw.
    virtual void tellEnd() {}

    /// Volume and pan as BASS_ATTRIB_VOL and BASS_ATTRIB_PAN, within their ranges.
    [[nodiscard]] float volume() const { return volume_; }
    [[nodiscard]] float pan() const { return pan_; }
    void setGains(float volume, float pan)
    {
        volume_ = volume;
        pan_ = pan;
        applyGains();
    }

    static constexpr float startVolume = 50;

private:
    virtual void applyGains() {}

    std::uint32_t flags_;
    std::int64_t length_;
    float volume_ = startVolume;
    float pan_ = 0;
};

}
