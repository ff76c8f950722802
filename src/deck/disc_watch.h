#pragma once

#include "deck/program_end.h"
#include "platform/platform.h"
#include "state/app_state.h"
#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// What Timer1 does twice a second: the status label blinks while a run or an encoder is at work, and the drive of the
/// hand-over file is watched. A disc that has gone empties the window; when a disc is back, the same one or another,
/// the program restarts through the launcher, which looks at it anew.
///
/// A drive that is not ready is one without a disc, but one that wakes up with a disc that is known already.
class DiscWatch {
public:
    /// Takes over Timer1 of the main window; start-up enables it.
    DiscWatch(state::AppState& state, state::RipdeckControls& ripdeck, ProgramEnd& programEnd,
              platform::Platform& platform);

private:
    void tick();
    void blink();
    bool discIsIn();
    void emptyWindow();

    state::AppState& state_;
    state::RipdeckControls& main_;
    ProgramEnd& programEnd_;
    platform::Platform& platform_;
};

}
