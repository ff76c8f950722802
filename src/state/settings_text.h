#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <optional>
#include <string>
#include <string_view>

namespace tonquay::state {

/// The text of one of the program's sequential files. Nothing when the file is missing, which is a normal case, or
/// when it cannot be read, which leaves a line.
std::optional<std::wstring> settingsText(platform::FileSystem& files, platform::Diagnostics& log,
                                         std::wstring_view path);

/// `folder` and `name` joined.
std::wstring inFolder(std::wstring_view folder, std::wstring_view name);

}
