#pragma once

#include "state/cdrip1_controls.h"
#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// Takes over the volume and balance sliders of the main window. They lead those of the engine's form, which act on
/// what plays and on every track that is played later; their tooltips show the volume from 0 to 10 and the balance as
/// it is. The captions beside them put each in its middle.
void wireVolume(state::RipdeckControls& ripdeck, state::Cdrip1Controls& engine);

}
