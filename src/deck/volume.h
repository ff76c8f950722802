#pragma once

#include "engine/playback.h"
#include "state/ripdeck_controls.h"

namespace tonquay::deck {

/// Takes over the volume and balance sliders of the main window. They act on what plays with the audio engine; their
/// tooltips show the volume from 0 to 10 and the balance as it is. The captions beside them put each in its middle.
void wireVolume(state::RipdeckControls& ripdeck, engine::Playback& playback);

}
