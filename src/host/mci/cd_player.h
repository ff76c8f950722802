#pragma once

#include "host/audio/sound_output.h"
#include "host/audio/thread_reaper.h"
#include "host/mci/disc_times.h"
#include "host/mci/played_disc.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"

#include <chrono>
#include <memory>

namespace tonquay::host {

/// A disc that is heard, from a place to its end, and whoever listens in. All calls belong to the logic's thread; none
/// waits for a drive.
class CdPlayer {
public:
    /// `patience`: how long a place that does not move is waited for.
    CdPlayer(platform::EventLoop& loop, platform::Diagnostics& log, std::chrono::milliseconds patience);
    ~CdPlayer() { stop(); }
    CdPlayer(const CdPlayer&) = delete;
    CdPlayer& operator=(const CdPlayer&) = delete;

    /// Opens the sound device, for a disc that is going to be played soon. False when nothing will be heard of it.
    bool prepareSound();

    /// It plays on a device that is gone.
    [[nodiscard]] bool isUnheard() const { return voice_ && !output_.isAlive(); }

    /// False when there is no sound device, not even a silent one, or no thread to be had.
    bool play(std::shared_ptr<Disc> disc, int firstSector);
    void stop(); ///< the place stays; says what was missing of the sound

    void rewind(); ///< for another disc: its place is its start

    /// Sectors from the start of the disc, with what is heard of the last one; the end of the disc when nothing more
    /// can come.
    double position();

    /// Has `tap` told of what is played from now on, also by a later play(), until endTap().
    void setTap(Voice::Tap tap);

    /// Bytes of sound that the tap was told of and that were not heard when it ended.
    std::int64_t endTap();

private:
    bool isOver();
    double placeNow();
    std::int64_t untapVoice();

    platform::EventLoop& loop_;
    platform::Diagnostics& log_;
    std::chrono::milliseconds patience_;
    // In the order of need: the voice uses the output, and gives its thread to the reaper.
    ThreadReaper reaper_;
    SoundOutput output_;
    std::shared_ptr<PlayedDisc> disc_;
    std::shared_ptr<Voice> voice_; ///< while it plays
    Voice::Tap tap_;
    std::int64_t unheard_ = 0;
    int firstSector_ = 0;
    int endSector_ = 0;
    double place_ = 0;
    std::chrono::steady_clock::time_point movedAt_{};
    bool over_ = false;
};

}
