#pragma once

#include <string_view>

namespace tonquay::host {

/// True when a name fits a pattern of * (any run of characters) and ? (any one), without regard to case. "*.*" fits
/// every name. The work is bounded by the product of the lengths.
bool fitsPattern(std::wstring_view name, std::wstring_view pattern);

}
