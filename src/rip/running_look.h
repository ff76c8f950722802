#pragma once

#include "state/ripdeck_controls.h"
#include "state/settings.h"

namespace tonquay::rip {

/// The main window while a run is on: bars and percentages show, the list and the disc's texts rest.
void showRunningLook(state::RipdeckControls& ripdeck, const state::Theme& theme);

/// After the last track: bars and percentages are gone, list and texts are back.
void showTracksDone(state::RipdeckControls& ripdeck);

/// The very end of a run.
void showIdleLook(state::RipdeckControls& ripdeck, const state::Theme& theme);

}
