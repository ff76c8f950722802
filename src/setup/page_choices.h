#pragma once

#include "state/app_state.h"
#include "state/cdriptab_controls.h"

namespace tonquay::setup {

/// The ticks and options that change a setting the moment they are set, and those that change each other. A form that
/// is put back to its design changes nothing.
class PageChoices {
public:
    PageChoices(state::AppState& state, state::CdriptabControls& form);

private:
    void keepOptions();
    void keepTicks();
    void scheduleChosen();
    void flipAdvanced();

    state::AppState& state_;
    state::CdriptabControls& form_;
};

}
