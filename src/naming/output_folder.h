#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "state/disc_info.h"
#include "state/settings.h"

#include <string>
#include <string_view>

namespace tonquay::naming {

/// The folder that a disc's files go to: the output folder, with a folder of the artist's name in it, and one of the
/// album's in that, as the settings ask and the names are known. Looks at nothing and makes nothing.
std::wstring outputFolder(const state::RipSettings& settings, const state::DiscInfo& disc);

/// The same, with missing folders made, one level at a time; one that cannot be made leaves a line, and whatever is
/// written there fails later.
std::wstring makeOutputFolder(platform::FileSystem& files, platform::Diagnostics& log,
                              const state::RipSettings& settings, const state::DiscInfo& disc);

/// `name` in `folder`. A folder of exactly three characters is a drive root and takes no further backslash.
std::wstring joined(std::wstring_view folder, std::wstring_view name);

}
