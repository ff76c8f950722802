#pragma once

#include "engine/drive_info.h"
#include "engine/engine_context.h"
#include "engine/playback.h"
#include "engine/position_timer.h"
#include "platform/platform.h"
#include "state/forms.h"

#include <cstdint>

namespace tonquay::engine {

/// The form cdrip1: the host of the audio engine. It lists the drives, plays, follows the position and extracts.
/// It lives off the screen; the main window works it through its controls and the calls here.
class EngineForm {
public:
    EngineForm(state::AppState& state, state::Forms& forms, platform::Platform& platform);
    /// Lets go of the stream, whose end would be told to nobody.
    ~EngineForm();
    EngineForm(const EngineForm&) = delete;
    EngineForm& operator=(const EngineForm&) = delete;

    Playback& playback() { return playback_; }

    /// Both return when the track is done.
    void ExtractAudioTrackToWav(std::int32_t track);
    void ExtractAudioTrackToWMA(std::int32_t track, std::int32_t bitrate);

private:
    void load();
    void close();
    void listDrives();
    void LoadWMAEncoderRates();
    void hideSliderToolTips();
    void SetTrackListTabs() { context_.form.trackListTabsSet = true; }
    void wireButtons();
    void extractChosen();
    void toggleDriveInfo();

    EngineContext context_;
    Playback playback_;
    DriveInfo driveInfo_;
    PositionTimer positionTimer_;
};

}
