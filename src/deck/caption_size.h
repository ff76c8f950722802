#pragma once

#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// Has artist and album, and the title beside them, change their size together: a press with the right button makes
/// both one point larger, with another one smaller. Sizes from 6 to 36 points are taken; past these a press does
/// nothing.
void wireCaptionSize(state::RipdeckControls& ripdeck);

}
