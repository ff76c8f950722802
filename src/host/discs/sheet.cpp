#include "host/discs/sheet.h"

#include "base/red_book.h"
#include "base/text.h"

#include <algorithm>
#include <array>

namespace tonquay::host {

namespace {

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

}

base::Failure sheetFailure(const std::string& path, int line, std::string text)
{
    std::string where = line > 0 ? path + ":" + std::to_string(line) : path;
    return {base::Failure::Kind::invalid, std::move(where), std::move(text)};
}

std::string shown(std::string_view text)
{
    return shown(base::fromFileBytes(text));
}

std::string shown(std::wstring_view text)
{
    constexpr std::size_t most = 60;
    std::wstring clean(text.substr(0, most));
    std::ranges::replace_if(
        clean, [](wchar_t c) { return c < L' ' || (c >= 0x7F && c < 0xA0); }, L'?');
    return base::utf8(clean) + (text.size() > most ? "..." : "");
}

std::optional<std::int64_t> wholeNumber(std::string_view text, std::int64_t most)
{
    constexpr std::size_t mostDigits = 18;
    if (text.empty() || text.size() > mostDigits)
        return std::nullopt;
    std::int64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value <= most ? std::optional(value) : std::nullopt;
}

std::optional<int> sectorsOfTime(std::string_view text)
{
    constexpr std::array<std::int64_t, 3> most{99, 59, 74};
    std::array<int, 3> fields{};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t end = i + 1 < fields.size() ? text.find(':') : text.size();
        if (end > 2)
            return std::nullopt;
        const auto field = wholeNumber(text.substr(0, end), most[i]);
        if (!field)
            return std::nullopt;
        fields[i] = static_cast<int>(*field);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return base::red_book::sectorAt(fields[0], fields[1], fields[2]);
}

bool hasSoundEnding(std::wstring_view name)
{
    constexpr std::array<std::wstring_view, 6> endings{L".WAV", L".WAVE", L".FLAC", L".AIF", L".AIFF", L".AIFC"};
    const std::wstring ending = base::upper(name.substr(std::min(name.rfind(L'.'), name.size())));
    return std::ranges::find(endings, ending) != endings.end();
}

std::wstring titleText(std::wstring_view text)
{
    constexpr std::wstring_view around = L" \t";
    const std::size_t first = text.find_first_not_of(around);
    if (first == std::wstring_view::npos)
        return {};
    text = text.substr(first, text.find_last_not_of(around) - first + 1);
    return std::wstring(text.substr(0, maxTextLength));
}

std::wstring yearOf(std::wstring_view date)
{
    constexpr std::size_t digits = 4;
    const bool year =
        date.size() > digits && std::ranges::all_of(date.substr(0, digits), isDigit) && !isDigit(date[digits]);
    return std::wstring(year ? date.substr(0, digits) : date);
}

}
