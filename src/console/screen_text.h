#pragma once

#include <string>
#include <string_view>

/// Texts on their way to a terminal or into JSON. They come from discs, sheets and file names and may hold anything.
namespace tonquay::console {

/// UTF-8 that does nothing to a terminal: control characters, marks that turn the direction of writing and bytes that
/// are no UTF-8 become U+FFFD.
std::string shown(std::wstring_view text);
std::string shownBytes(std::string_view bytes);

/// UTF-8 for JSON: valid whatever the text holds. Control characters stay, JSON escapes them.
std::string jsonText(std::wstring_view text);
std::string jsonBytes(std::string_view bytes);

/// How many columns a terminal needs for a text that shown() or shownBytes() gave: 2 for an East Asian wide character
/// or an emoji, 0 for a combining mark.
int columnsOf(std::string_view shownText);

/// At most `columns` columns of such a text; where something had to go, it ends in "…".
std::string fitted(std::string_view shownText, int columns);

}
