#pragma once

#include "engine/playback.h"
#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>

namespace tonquay::deck {

/// The transport keys that play a track to listen to it: previous, next, play, pause, and what Stop and Eject do to a
/// preview. They work on the audio engine or the drive control, whichever reads the disc.
///
/// While a run reads with the audio engine they do nothing: the stream is the run's.
class Preview {
public:
    Preview(state::AppState& state, state::Forms& forms, engine::Playback& playback, platform::Platform& platform);

    /// Ends a preview and puts bars, track number and title back; what Stop does apart from stopping a run.
    void stop();

    /// Ends a preview the way the "Stop Preview" label does.
    void endPreview();

    /// Goes to a part of the playing track, 0 to 1 (audio engine only).
    void seek(double fraction);

private:
    bool usesEngine() const { return state_.path.ripEngineMode == 0; }
    bool streamIsTheRuns() const;
    void previous();
    void next();
    void play();
    void pause();
    void eject();
    void startRow(std::int32_t row);
    void showRow(std::int32_t row);
    void showBegun(std::int32_t number);
    void showEnded();
    void startByControl();
    void setPaused(bool paused);

    state::AppState& state_;
    state::Forms& forms_;
    state::RipdeckControls& main_;
    engine::Playback& playback_;
    platform::Platform& platform_;
    bool pausePictureShows_ = false;
};

}
