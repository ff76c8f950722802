#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// How a text is fitted into a field of a tag, and taken out of it.
namespace tonquay::tags {

class COptions;

/// Without blanks and NULs at its end.
std::wstring TrimTagText(std::wstring_view text);

/// A text of at most `maximum` characters. A longer one is cut; when the user's options (read only then) have a
/// FillUp text, it ends the cut text and counts in its length. A FillUp longer than `maximum` leaves nothing.
std::wstring FitTagText(std::wstring_view text, std::size_t maximum, COptions& options);

/// The text of a field as it is stored: the blanks at its end are NULs, those inside stay.
std::wstring BlankToNul(std::wstring_view text);

}
