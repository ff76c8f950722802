#pragma once

#include "state/ripdeck_controls.h"

#include <cstdint>

/// How far a track and its run have come, on the bars of the main window and in the texts above them.
namespace tonquay::rip {

/// Within 0 to 100; what is no number is 0.
std::int16_t percentOf(double value);

/// False when the text has shown that percentage already; then there is nothing new for the run as a whole either.
bool showTrackPercent(state::RipdeckControls& main, std::int16_t track);

/// The last step to the full bar is not to be seen before the track in hand has made it.
void showTotalPercent(state::RipdeckControls& main, std::int16_t total, std::int16_t track);

}
