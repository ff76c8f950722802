#pragma once

#include <string>
#include <string_view>

namespace tonquay::naming {

/// A text made fit for a file name: the characters \ / ? : * " > < | are taken out, with nothing in their place, and
/// blanks at the ends go. Everything else stays, control characters included. May leave nothing.
std::wstring nonasc(std::wstring_view source);

/// True for a text with none of those characters: one that holds them names no file, or one in another folder.
bool fitsFileName(std::wstring_view text);

}
