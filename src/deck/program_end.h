#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// The two ways in which the program ends: the Power control, which keeps the window's place, and a restart through
/// the launcher, which saves nothing.
class ProgramEnd {
public:
    /// Takes over the Power control of the main window.
    ProgramEnd(state::AppState& state, state::RipdeckControls& ripdeck, platform::Platform& platform);

    /// Starts the launcher, which looks at the disc anew and starts the ripper again, and ends this process at once.
    void restartThroughLauncher();

private:
    void stopPreview();

    state::AppState& state_;
    platform::Platform& platform_;
};

}
