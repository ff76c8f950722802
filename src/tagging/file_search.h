#pragma once

#include "platform/file_system.h"
#include "state/disc_info.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tonquay::tagging {

/// The names, without ending, that the MP3 file of a track may have, in the order in which they are tried. They stand
/// as the disc's data give them, also when no file can be called so.
std::array<std::wstring, 8> candidateNames(const state::DiscInfo& disc, std::int32_t track);

/// Where the MP3 files of a disc are looked for: the folder of its album below the output folder, else that of its
/// artist, else the output folder itself. Looks only for those that the disc has a name for.
std::wstring tagFolder(platform::FileSystem& files, std::wstring_view outputFolder, const state::DiscInfo& disc);

/// The full path of the first candidate that is a file in `folder`. Only the name counts, not what the file holds. A
/// name with a character that no file name has is not looked for, so nothing outside the folder is found.
std::optional<std::wstring> findTrackFile(platform::FileSystem& files, std::wstring_view folder,
                                          const state::DiscInfo& disc, std::int32_t track);

}
