#include "base/text.h"

#include "base/case_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace tonquay::base {

namespace {

constexpr wchar_t replacement = 0xFFFD;
constexpr wchar_t rawByteBase = 0xDC00;

constexpr std::array<wchar_t, 32> windows1252High{
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};

struct Decoded {
    wchar_t character;
    std::size_t length;
};

/// The character at the start of `bytes`, or nothing when no well-formed sequence begins there.
std::optional<Decoded> decode(std::string_view bytes)
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])); };
    const std::uint32_t lead = byte(0);
    if (lead < 0x80)
        return Decoded{static_cast<wchar_t>(lead), 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length)
        return std::nullopt;
    std::uint32_t value = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return std::nullopt;
        value = value << 6 | (byte(i) & 0x3F);
    }
    constexpr std::array<std::uint32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    if (value < smallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return std::nullopt;
    return Decoded{static_cast<wchar_t>(value), length};
}

void encode(std::uint32_t value, std::string& out)
{
    const auto put = [&](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (value < 0x80) {
        put(value);
    } else if (value < 0x800) {
        put(0xC0 | value >> 6);
        put(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        put(0xE0 | value >> 12);
        put(0x80 | (value >> 6 & 0x3F));
        put(0x80 | (value & 0x3F));
    } else {
        put(0xF0 | value >> 18);
        put(0x80 | (value >> 12 & 0x3F));
        put(0x80 | (value >> 6 & 0x3F));
        put(0x80 | (value & 0x3F));
    }
}

}

wchar_t upper(wchar_t character)
{
    const auto code = static_cast<char32_t>(character);
    const auto after =
        std::upper_bound(detail::caseRuns.begin(), detail::caseRuns.end(), code,
                         [](std::uint32_t value, const detail::CaseRun& run) { return value < run.first; });
    if (after == detail::caseRuns.begin())
        return character;
    const detail::CaseRun& run = *std::prev(after);
    if (code > run.last || (code - run.first) % run.step != 0)
        return character;
    return static_cast<wchar_t>(static_cast<std::int32_t>(code) + run.distance);
}

std::wstring upper(std::wstring_view text)
{
    std::wstring result(text);
    for (wchar_t& character : result)
        character = upper(character);
    return result;
}

std::wstring_view trim(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

bool isBlank(std::wstring_view text)
{
    return trim(text).empty();
}

bool sameText(std::wstring_view left, std::wstring_view right)
{
    return std::ranges::equal(left, right, [](wchar_t a, wchar_t b) { return a == b || upper(a) == upper(b); });
}

std::wstring replaced(std::wstring_view text, wchar_t from, wchar_t to)
{
    std::wstring result(text);
    std::ranges::replace(result, from, to);
    return result;
}

std::string utf8(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const wchar_t character : text) {
        const auto value = static_cast<char32_t>(character);
        if (value >= 0xDC80 && value <= 0xDCFF)
            out.push_back(static_cast<char>(value - rawByteBase));
        else if (value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
            encode(replacement, out);
        else
            encode(value, out);
    }
    return out;
}

std::wstring fromHostBytes(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        if (const auto decoded = decode(bytes)) {
            text.push_back(decoded->character);
            bytes.remove_prefix(decoded->length);
        } else {
            text.push_back(static_cast<wchar_t>(rawByteBase + static_cast<unsigned char>(bytes.front())));
            bytes.remove_prefix(1);
        }
    }
    return text;
}

bool isUtf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto decoded = decode(bytes);
        if (!decoded)
            return false;
        bytes.remove_prefix(decoded->length);
    }
    return true;
}

std::wstring fromFileBytes(std::string_view bytes)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (!isUtf8(bytes))
        return fromWindows1252(bytes);
    if (bytes.starts_with(mark))
        bytes.remove_prefix(mark.size());
    return fromHostBytes(bytes);
}

std::wstring fromWindows1252(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text.push_back(byte >= 0x80 && byte < 0xA0 ? windows1252High[byte - 0x80] : static_cast<wchar_t>(byte));
    }
    return text;
}

std::string windows1252(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        if (const auto* high = std::ranges::find(windows1252High, character); high != windows1252High.end())
            bytes.push_back(static_cast<char>(0x80 + (high - windows1252High.begin())));
        else if (character >= 0 && (character < 0x80 || (character >= 0xA0 && character <= 0xFF)))
            bytes.push_back(static_cast<char>(character));
        else
            bytes.push_back('?');
    }
    return bytes;
}

}
