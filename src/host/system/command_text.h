#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::host {

/// One argument of a command text.
struct CommandWord {
    std::wstring text;     ///< without the quotes that grouped it
    bool wildcard = false; ///< has a * or ? that stood outside of quotes
    bool quoted = false;   ///< began with a grouping quote, so that its first character was meant as text
};

/// A command text taken apart.
struct CommandText {
    std::wstring program;
    std::vector<CommandWord> arguments;
};

/// Splits a command text by the rules that the texts are made for.
///
/// Blanks and tabs part the words; double quotes group and vanish. Backslashes are plain characters but before a
/// double quote: two of them there are one, and an odd one makes the quote a plain character. The program is the first
/// word, in quotes or not, and knows no escapes. An unquoted program path may hold blanks: of its prefixes that end
/// before a blank, the shortest that `isProgram` answers true for is taken; when none is, the first word is.
///
/// Nothing for a text without a program.
std::optional<CommandText> splitCommand(std::wstring_view text,
                                        const std::function<bool(std::wstring_view)>& isProgram);

}
