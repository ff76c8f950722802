#pragma once

#include "state/ripdeck_controls.h"
#include "state/settings.h"

namespace tonquay::state {

/// The border of the track list, in the theme's colours.
void setborder(RipdeckControls& ripdeck, const Theme& theme);

/// The progress panels, in the theme's colours.
void sbarbc(RipdeckControls& ripdeck, const Theme& theme);

}
