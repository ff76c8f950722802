#pragma once

#include "platform/platform.h"
#include "rip/capture_disc.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string>

namespace tonquay::rip {

/// The form cdrecalt, which plays tracks and records what is heard, in the time that they take to play.
///
/// It drives itself as soon as it loads: it reads the disc, takes the track that a run has handed over, and starts.
/// analogBusy is 1 from then until the last recording was saved, and the place of the disc is looked at by a timer
/// meanwhile. A track that no disc has, or none, leaves a capture that ends with the first look.
///
/// By hand, tracks are moved to the second list and started. A group of tracks that follow each other becomes one
/// recording: the group's marker ends it.
class AnalogCapture {
public:
    AnalogCapture(state::AppState& state, state::Forms& forms, platform::Platform& platform);

private:
    void load();
    void queryUnload();
    void moveToRecord();
    void moveBack();
    void start();
    bool scanRecordList();
    void setWorking(bool working);
    void recordNext();
    void findStretch();
    void takeGroupAlong();
    void openCapture();
    void setFormat();
    void playAndRecord();
    void fail(std::wstring_view message);
    void cancel();
    void tick();
    void showProgress(std::int32_t position);
    void endRecording();
    bool onLastRow() const;
    bool succeeds(std::wstring_view command);

    state::AppState& state_;
    state::CdrecaltControls& form_;
    state::RipdeckControls& main_;
    platform::Platform& platform_;
    CaptureDisc disc_;
    std::int32_t currentTrack = 0;
    std::int32_t captureStartMs = 0;
    std::int32_t captureStopMs = 0; ///< 0: no capture is to run
    std::wstring captureFile;
    bool hasGroup = false; ///< the record list has a group's marker
};

}
