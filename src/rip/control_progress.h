#pragma once

#include "platform/acd_control.h"
#include "state/app_state.h"
#include "state/ripdeck_controls.h"

#include <cstdint>

namespace tonquay::rip {

/// What the drive control tells while it extracts: the bars and their texts, and the end that a run waits for.
class ControlProgress {
public:
    ControlProgress(state::AppState& state, state::RipdeckControls& ripdeck, platform::AcdControl& acd);
    ~ControlProgress();
    ControlProgress(const ControlProgress&) = delete;
    ControlProgress& operator=(const ControlProgress&) = delete;

private:
    void ripProgress(std::int32_t tenthsOfPercent);

    state::AppState& state_;
    state::RipdeckControls& main_;
    platform::AcdControl& acd_;
};

}
