#pragma once

#include "platform/platform.h"
#include "platform/system_info.h"
#include "state/app_state.h"
#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// Moves a stored place back onto the screen. The margins count in the test only: a window that is moved back ends
/// exactly at the edge.
void clampPlace(state::WindowState& window, const controls::Form& form, const platform::SystemInfo::Screen& screen);

/// Puts a form in the middle of the screen.
void centerOnScreen(controls::Form& form, const platform::SystemInfo::Screen& screen);

/// Takes over where the window is, moved back onto the screen if need be, and stores it in RIPPOS.DAT.
void saveposn(state::AppState& state, state::RipdeckControls& ripdeck, platform::Platform& platform);

}
