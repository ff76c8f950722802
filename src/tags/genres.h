#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The genres of the tag at the end of a file: a byte there, a name here.
///
/// There are two lists. The one that names and numbers are looked up in, and the one that a user picks from, which
/// differs in five rows: three are spelled in another way ("Fast-Fusion", "Blue Grass", "Avantegarde"), and "Celtic"
/// and "Revival" have changed places. A spelling that only the picked list has is not found when it is looked up.
namespace tonquay::tags {

/// In both lists.
inline constexpr std::size_t genreCount = 148;

/// The name for a number as text, blanks around it or not: L" 17" is "Rock". A text that does not begin with a number
/// counts as 0; an empty one, and a number outside the list, have no name (an empty text).
std::wstring GenreNameFromNumber(std::wstring_view number);

/// The number of a name that is spelled exactly as in the look-up list, capitals and blanks included. Any other name
/// is 0, which is also the number of "Blues"; isGenreName() tells the two apart.
std::int16_t GenreNumberFromName(std::wstring_view name);

/// True for a name that the look-up list has.
bool isGenreName(std::wstring_view name);

/// The name that the user is shown at a place of the list, counted from 0; empty behind its end.
std::wstring_view shownGenre(std::size_t index);

}
