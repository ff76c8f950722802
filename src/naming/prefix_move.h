#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tonquay::naming {

/// The width at which a disc's artist and album are kept when they are entered for tags: that of a tag's text field.
inline constexpr std::size_t nameWidth = 30;

/// `text` filled up with blanks, or cut, to exactly `width` characters.
std::wstring fixedWidth(std::wstring_view text, std::size_t width);

/// A name with a leading "A ", "An " or "The ", in any case, moved to its end: "The Beat" becomes "Beat, The". The
/// three are looked for once each, in that order, so "A The Beat" becomes "Beat, A, The". The name may carry blanks at
/// its end; blanks count as such, so the name "A" has nothing but its prefix and becomes ", A". The result is exactly
/// nameWidth characters wide, and what does not fit is gone.
std::wstring prefixMoved(std::wstring_view name);

}
