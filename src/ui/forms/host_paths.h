#pragma once

#include "platform/file_system.h"

#include <QString>

#include <string>

/// Paths as people on this system write them, for boxes and lists in which the program has its own form.
namespace tonquay::ui {

/// The host's form of a whole path of the program; anything else stays as it is.
QString shownPath(platform::FileSystem& files, const std::wstring& path);

/// What a person has typed, in the program's form: a path from the root or the home folder on. Anything else stays as
/// it is.
std::wstring typedPath(platform::FileSystem& files, const QString& text);

}
