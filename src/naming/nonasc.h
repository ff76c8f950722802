#pragma once

#include <string>
#include <string_view>

namespace tonquay::naming {

/// A text made fit for a file name: the characters \ / ? : * " > < | are taken out, with nothing in their place, and
/// blanks at the ends go. Everything else stays, control characters included. May leave nothing.
std::wstring nonasc(std::wstring_view source);

}
