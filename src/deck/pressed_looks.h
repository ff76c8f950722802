#pragma once

#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// Has the transport and command keys show as pressed while they are held. The handler of the release, which does a
/// key's work, puts its look back.
void wirePressedLooks(state::RipdeckControls& ripdeck);

}
