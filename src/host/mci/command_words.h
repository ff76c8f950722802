#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Command texts, taken apart.
namespace tonquay::host {

/// What stands between the blanks of a command. Double quotes keep blanks together and are left out; one that is never
/// closed ends with the text.
std::vector<std::wstring> commandWords(std::wstring_view command);

/// Whether the words from `from` on are these, without regard to case, and no others behind them. A "*" stands for any
/// word.
bool wordsAre(const std::vector<std::wstring>& words, std::size_t from, std::wstring_view pattern);

/// Digits and nothing else, of 0 to 2147483647.
std::optional<std::int32_t> wholeNumber(std::wstring_view word);

}
