#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "setup/setup_state.h"
#include "state/app_state.h"
#include "state/cdriptab_controls.h"

namespace tonquay::setup {

/// Copies the settings into the controls. A number that no option has leaves its group without a choice.
void cacdset(const state::AppState& state, state::CdriptabControls& form);

/// Copies the controls into the settings and writes riptype.ini, which goes by the rip method as it stands then, and
/// acdset.ini. Groups without a choice and an empty quality box keep the setting.
void saveset(platform::FileSystem& files, platform::Diagnostics& log, const SetupState& page,
             state::CdriptabControls& form, state::AppState& state);

}
