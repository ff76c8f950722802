#pragma once

#include "host/audio/playback_stream.h"
#include "host/audio/read_ahead.h"
#include "host/audio/sound_output.h"
#include "host/audio/thread_reaper.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"

#include <memory>

namespace tonquay::host {

/// One track at a time, heard as it is on the disc, without volume or balance. All calls from the logic's thread; none
/// waits for a drive.
class TrackPlayer {
public:
    TrackPlayer(platform::EventLoop& loop, platform::Diagnostics& log);

    /// Ends what played before. False when there is no sound device or no thread to be had.
    bool play(std::shared_ptr<Disc> disc, ReadAhead::Stretch stretch);
    void pause();
    void resume();
    void stop();

    /// From play() to stop(), also when it is paused or has come to its end.
    [[nodiscard]] bool isEngaged() const { return stream_ != nullptr; }

    [[nodiscard]] Stream::Engine::Active active() const;

private:
    void ended(std::uint32_t generation);

    platform::EventLoop& loop_;
    platform::Diagnostics& log_;
    // In the order of need: the stream uses the output, and gives its thread to the reaper.
    ThreadReaper reaper_;
    SoundOutput output_;
    std::shared_ptr<PlaybackStream> stream_;
};

}
