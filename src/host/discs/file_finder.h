#pragma once

#include "base/result.h"

#include <filesystem>
#include <string_view>

namespace tonquay::host {

/// Finds the file that a sheet names: as it is written, from the folder of the sheet; then by its last component
/// beside the sheet, without regard to case; then, for sound files, under the same name with the ending of another
/// kind of sound file, as music is packed after its sheet was made. Among several that match, the first by its bytes.
///
/// Names may come from other systems: a backslash parts folders, and a drive letter means that only the last component
/// counts. Fails when there is none; `sheet` is the path of the sheet.
base::Result<std::filesystem::path> findFile(const std::filesystem::path& sheet, std::wstring_view name, bool sound);

}
