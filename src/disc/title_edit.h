#pragma once

#include "controls/handler.h"
#include "platform/acd_control.h"
#include "platform/dialogs.h"
#include "state/app_state.h"
#include "state/ripdeck_controls.h"

#include <array>
#include <cstdint>

namespace tonquay::disc {

/// A right click in the track list: a new title for the track under the cursor. Selection and cursor stay.
class TitleEdit {
public:
    TitleEdit(state::AppState& state, state::RipdeckControls& ripdeck, platform::AcdControl& acd,
              platform::Dialogs& dialogs);

    void List1_MouseDown(controls::MouseButton button);

private:
    void rebuildList();

    state::AppState& state_;
    controls::MultiSelectList& list_;
    platform::AcdControl& acd_;
    platform::Dialogs& dialogs_;
    std::array<std::int16_t, state::maxTracks + 1> trackSelectionMemo{}; ///< 1 for a selected row, by row
};

}
