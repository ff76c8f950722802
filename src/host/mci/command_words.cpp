#include "host/mci/command_words.h"

#include "base/text.h"

#include <limits>

namespace tonquay::host {

std::vector<std::wstring> commandWords(std::wstring_view command)
{
    std::vector<std::wstring> words;
    bool inWord = false;
    bool quoted = false;
    for (const wchar_t c : command) {
        if (c == L' ' && !quoted) {
            inWord = false;
            continue;
        }
        if (!inWord)
            words.emplace_back();
        inWord = true;
        if (c == L'"')
            quoted = !quoted;
        else
            words.back() += c;
    }
    return words;
}

bool wordsAre(const std::vector<std::wstring>& words, std::size_t from, std::wstring_view pattern)
{
    const std::vector<std::wstring> wanted = commandWords(pattern);
    if (words.size() != from + wanted.size())
        return false;
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (wanted[i] != L"*" && !base::sameText(words[from + i], wanted[i]))
            return false;
    return true;
}

std::optional<std::int32_t> wholeNumber(std::wstring_view word)
{
    std::int64_t number = 0;
    for (const wchar_t c : word) {
        if (c < L'0' || c > L'9')
            return std::nullopt;
        number = number * 10 + (c - L'0');
        if (number > std::numeric_limits<std::int32_t>::max())
            return std::nullopt;
    }
    return word.empty() ? std::nullopt : std::optional(static_cast<std::int32_t>(number));
}

}
