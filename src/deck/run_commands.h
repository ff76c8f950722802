#pragma once

#include "deck/preview.h"
#include "platform/platform.h"
#include "rip/rip_driver.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::deck {

/// The keys around a run: Start and Stop.
class RunCommands {
public:
    RunCommands(state::AppState& state, state::Forms& forms, rip::RipDriver& driver, Preview& preview,
                platform::Platform& platform);

    /// Rips the selected tracks; returns at the end of the run. Nothing happens with no track selected or a run on.
    void start();

    /// Ends a preview and takes all selections away. A run ends after the track in hand, which the drive control breaks
    /// off and the audio engine finishes.
    void stop();

private:
    state::AppState& state_;
    state::Forms& forms_;
    state::RipdeckControls& main_;
    rip::RipDriver& driver_;
    Preview& preview_;
    platform::Platform& platform_;
};

}
