#pragma once

#include <string>
#include <string_view>

/// Names that a person types for a disc, made fit for where they go: file names, tags, and the double quotes of an
/// encoder's command.
namespace tonquay::ui {

/// Double quotes become apostrophes, control characters and line ends blanks.
std::wstring typedText(std::wstring_view text);

/// The same for what is quoted to its end in a command (year, genre, comment), where a backslash at the end would
/// swallow the closing quote.
std::wstring typedTag(std::wstring_view text);

/// The same for an artist or album, which becomes a folder: one of dots only, which would lead out of the output
/// folder, is left out.
std::wstring typedFolderName(std::wstring_view text);

}
