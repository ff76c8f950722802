#pragma once

#include "state/disc_info.h"

#include <cstdint>
#include <string>

namespace tonquay::naming {

/// How a track's file is named, RipSettings::nameFormat.
enum class NameFormat : std::int16_t {
    trackName = 0,       ///< Dawn
    trackNumber = 1,     ///< Track3
    artist = 2,          ///< Ann Lee 3
    album = 3,           ///< First Light 3
    artistAlbum = 4,     ///< Ann Lee - First Light 3
    artistTrackName = 5, ///< Ann Lee - Dawn
    numberTrackName = 6, ///< 03 - Dawn
};

/// The file name of track `number` without its ending. Titles, artist and album are taken as they stand in `disc`; a
/// run has cleaned them before. A name that comes out shorter than `shortest` characters becomes "Track" and the
/// number: the ripping of a track asks for 2, every later look for its file for 1.
std::wstring fileName(std::int16_t nameFormat, const state::DiscInfo& disc, std::int32_t number, std::size_t shortest);

inline constexpr std::size_t shortestRippedName = 2;
inline constexpr std::size_t shortestRebuiltName = 1;

}
