#pragma once

#include "platform/id3v2_contents.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Frames of ID3v2 tags in words for people.
namespace tonquay::utility {

/// What a frame is called: "Picture" for "APIC" and for "PIC" of version 2.2. An identifier that is not known is its
/// own name.
std::wstring frameName(std::string_view identifier);

/// The place of the value that a frame holds, of version 2.2 too; nothing for a frame that is not shown.
std::optional<std::size_t> fieldOf(std::string_view identifier);

/// One line: "Picture: front cover, image/jpeg, 34 KB", "Comment (eng, iTunNORM): 0000 ...".
std::wstring frameLine(const platform::Id3v2Contents::Frame& frame);

/// A text of a file as one line that is not too long, without what cannot be seen.
std::wstring tidy(std::wstring_view text);

/// "1 byte", "345 bytes", "34 KB"; a part of a KB counts as one.
std::wstring sizeText(std::size_t bytes);

}
