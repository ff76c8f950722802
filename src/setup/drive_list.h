#pragma once

#include "platform/acd_control.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::setup {

/// The setup dialog's list of drives, filled when the dialog loads: those of whichever way of reading is live.
class DriveList {
public:
    DriveList(state::AppState& state, state::Forms& forms, platform::AcdControl& acd);

private:
    void fill();

    state::AppState& state_;
    state::Forms& forms_;
    platform::AcdControl& acd_;
};

}
