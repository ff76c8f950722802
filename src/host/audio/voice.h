#pragma once

#include "host/audio/read_ahead.h"
#include "host/audio/sound.h"

#include <chrono>
#include <functional>
#include <memory>

namespace tonquay::host {

/// What the sound callback knows of one playback stream: its data, its loudness and how far it has come.
///
/// The sound device holds two blocks: the one that sounds and the one that was just made. So what is heard is one
/// block behind what was taken, and a stream is over when a block without any of it begins.
///
/// Every call is made with the mixer's lock held.
class Voice {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit Voice(std::unique_ptr<ReadAhead> source);

    /// Adds the next frames to a block of interleaved samples; saturates. What is not read yet stays silent.
    /// Never waits or allocates. `now` is the time at which the block before this one begins to sound.
    void mixInto(std::span<std::int16_t> block, Time now);

    /// `volume` 0 to 100, linear: 50 is half the amplitude. `pan` -100 to 100 turns the far side down, linearly, and
    /// leaves the near one. 100 and 0 give the samples exactly as they are on the disc.
    void setGains(float volume, float pan);

    /// Has `tap` told of every frame that is mixed from now on, as it is on the disc; an empty one ends that. It is
    /// called where mixInto() is and may as little wait or allocate.
    using Tap = std::function<void(std::span<const std::byte> frames)>;
    void setTap(Tap tap) { tap_ = std::move(tap); }

    void seek(std::int64_t position);

    /// To be called when the voice leaves the mixer: nothing of it sounds any more, the place stays.
    void rest();

    [[nodiscard]] std::int64_t heardPosition(Time now) const;
    [[nodiscard]] std::int64_t takenPosition() const { return taken_; } ///< where the next block will begin
    [[nodiscard]] Peaks heardPeaks() const { return heard_.peaks; }     ///< before volume and pan
    [[nodiscard]] bool starving() const { return starving_; }           ///< the last block wanted more than was read

    const ReadAhead& source() const { return *source_; }

private:
    /// A stretch of the stream that lies in one block of the device.
    struct Block {
        std::int64_t begin = 0;
        std::int64_t end = 0;
        Peaks peaks;
    };

    void add(std::span<const std::byte> frames, std::span<std::int16_t> block) const;

    std::unique_ptr<ReadAhead> source_;
    Tap tap_;
    std::int32_t leftGain_;
    std::int32_t rightGain_;
    std::int64_t taken_ = 0;
    Block heard_;
    Block coming_;
    Time heardSince_{};
    bool starving_ = false;
    bool over_ = false;
};

}
