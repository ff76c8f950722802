#include "host/system/command_text.h"

#include <algorithm>

namespace tonquay::host {

namespace {

constexpr std::wstring_view blanks = L" \t";

std::wstring_view withoutLeadingBlanks(std::wstring_view text)
{
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

std::wstring takeProgram(std::wstring_view& rest, const std::function<bool(std::wstring_view)>& isProgram)
{
    if (rest.starts_with(L'"')) {
        const std::size_t close = std::min(rest.find(L'"', 1), rest.size());
        std::wstring program(rest.substr(1, close - 1));
        rest.remove_prefix(std::min(close + 1, rest.size()));
        return program;
    }
    // A quote begins an argument, so the path of the program ends before it at the latest.
    const std::size_t longest = std::min(rest.find(L'"'), rest.size());
    std::size_t firstEnd = std::wstring_view::npos;
    for (std::size_t end = 0; end < longest;) {
        end = std::min(rest.find_first_of(blanks, end), longest);
        firstEnd = std::min(firstEnd, end);
        if (isProgram(rest.substr(0, end))) {
            firstEnd = end;
            break;
        }
        end = std::min(rest.find_first_not_of(blanks, end), longest);
    }
    std::wstring program(rest.substr(0, firstEnd));
    rest.remove_prefix(std::min(firstEnd, rest.size()));
    return program;
}

CommandWord takeWord(std::wstring_view& rest)
{
    CommandWord word;
    word.quoted = rest.starts_with(L'"');
    bool quoted = false;
    while (!rest.empty() && (quoted || blanks.find(rest.front()) == std::wstring_view::npos)) {
        const std::size_t slashes = std::min(rest.find_first_not_of(L'\\'), rest.size());
        const bool beforeQuote = slashes < rest.size() && rest[slashes] == L'"';
        word.text.append(beforeQuote ? slashes / 2 : slashes, L'\\');
        rest.remove_prefix(slashes);
        if (beforeQuote) {
            if (slashes % 2 == 1)
                word.text += L'"';
            else
                quoted = !quoted;
            rest.remove_prefix(1);
        } else if (slashes == 0) {
            word.wildcard = word.wildcard || (!quoted && (rest.front() == L'*' || rest.front() == L'?'));
            word.text += rest.front();
            rest.remove_prefix(1);
        }
    }
    return word;
}

}

std::optional<CommandText> splitCommand(std::wstring_view text, const std::function<bool(std::wstring_view)>& isProgram)
{
    std::wstring_view rest = withoutLeadingBlanks(text);
    CommandText command;
    command.program = takeProgram(rest, isProgram);
    if (command.program.empty())
        return std::nullopt;
    for (rest = withoutLeadingBlanks(rest); !rest.empty(); rest = withoutLeadingBlanks(rest))
        command.arguments.push_back(takeWord(rest));
    return command;
}

}
