#pragma once

#include <tstring.h>

#include <string>

namespace tonquay::host {

/// A text of the library's. It keeps UTF-16 units; a half of a pair alone is no character and must not pass for a byte
/// of a file name, so it becomes U+FFFD.
std::wstring textOf(const TagLib::String& from);

}
