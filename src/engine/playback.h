#pragma once

#include "engine/engine_context.h"

#include <cstdint>

namespace tonquay::engine {

/// Plays tracks of the disc, one after the other without end. Tracks count from 0; -1 is no track, which the engine
/// refuses. While an extraction is in hand the stream is its own, and every call here but openDoor() and the volume
/// label does nothing.
class Playback {
public:
    explicit Playback(EngineContext& context);

    /// Ends what plays and starts a track. A failure shows nothing: it stays silent.
    void PlayTrack(std::int32_t track);

    /// The track after `track` in the list; after the last one the first.
    void PlayNextTrack(std::int32_t track);

    /// A stream that failed while it played: stops, says so and empties the track list.
    void CDError();

    void pauseOrResume();
    void stop();
    void openDoor(std::uint32_t drive);

    /// The volume of a slider, -100 full to 0 silent, on the stream.
    void applyVolume(std::int32_t sliderValue);
    void applyBalance(std::int32_t sliderValue);

    /// Goes to a part of the track, 0 to 1.
    void seek(double fraction);

    /// Empty: the key that would fade the track out has no effect.
    void FadeOutTrack() {}

private:
    void installSyncs(std::int32_t track);

    EngineContext& c_;
};

/// The volume as a number from 0 to 10, as the labels and tooltips show it.
std::int32_t shownVolume(std::int32_t sliderValue);

}
