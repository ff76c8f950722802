#pragma once

#include "controls/lists.h"
#include "platform/acd_control.h"
#include "state/disc_info.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::disc {

/// One row of the track list: number, play time, size of the WAV file in MB and title, parted by tabs and the fixed
/// blanks that the list's columns were laid out with.
std::wstring trackRow(std::int32_t number, std::int32_t seconds, std::wstring_view title);

/// Adds the row of track `number` at the end of the list.
void addTrackRow(controls::MultiSelectList& list, const state::DiscInfo& disc, std::int32_t number,
                 std::int32_t seconds);

/// The same with the length that the drive control tells, which is noted. Where it tells none the one that is known
/// stays.
void addControlTrack(controls::MultiSelectList& list, state::DiscInfo& disc, platform::AcdControl& acd,
                     std::int16_t number);

}
