#pragma once

#include "platform/discs.h"

#include <string>

namespace tonquay::host {

/// The names of a disc as BASS_CD_GetID hands them out: "TITLE0=album", "PERFORMER0=artist", "TITLE1=first track" and
/// so on, each ended by NUL, then an empty one. UTF-8. An unknown name has no string; without any the block is empty.
std::string cdTextBlock(const platform::DiscNames& names);

}
