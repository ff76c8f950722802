#pragma once

#include "console/rip_view.h"

#include <string>

/// The lines that more than one view shows, without their line ends.
namespace tonquay::console {

/// Number, path, seconds, speed, CRC-32 and verdict of a finished track.
std::string verdictLine(const TrackVerdict& verdict);

/// For standard error: the track, its file, and what is wrong with it.
std::string problemLine(const TrackVerdict& verdict);

std::string summaryLine(const RunEnd& end);

}
