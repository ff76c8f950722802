#include "console/screen_text.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace tonquay::console {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array unprintable{
    Range{0x0000, 0x001F}, Range{0x007F, 0x009F}, Range{0x2028, 0x202E}, Range{0x2066, 0x2069}, Range{0xFFF9, 0xFFFB},
};

// Unicode's East Asian Width W and F, in blocks: a few unassigned characters among them do no harm.
constexpr std::array wide{
    Range{0x1100, 0x115F},   Range{0x231A, 0x231B},   Range{0x23E9, 0x23EC},   Range{0x25FD, 0x25FE},
    Range{0x2614, 0x2615},   Range{0x2648, 0x2653},   Range{0x26AA, 0x26AB},   Range{0x26BD, 0x26BE},
    Range{0x2705, 0x2705},   Range{0x2728, 0x2728},   Range{0x2753, 0x2757},   Range{0x2795, 0x2797},
    Range{0x2B1B, 0x2B1C},   Range{0x2B50, 0x2B50},   Range{0x2E80, 0x303E},   Range{0x3041, 0x33FF},
    Range{0x3400, 0x4DBF},   Range{0x4E00, 0x9FFF},   Range{0xA000, 0xA4CF},   Range{0xA960, 0xA97F},
    Range{0xAC00, 0xD7A3},   Range{0xF900, 0xFAFF},   Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},
    Range{0xFFE0, 0xFFE6},   Range{0x16FE0, 0x18DFF}, Range{0x1B000, 0x1B2FF}, Range{0x1F300, 0x1F64F},
    Range{0x1F680, 0x1F6FF}, Range{0x1F7E0, 0x1F7EB}, Range{0x1F900, 0x1F9FF}, Range{0x1FA70, 0x1FAFF},
    Range{0x20000, 0x3FFFD},
};

constexpr std::array zeroWidth{
    Range{0x0300, 0x036F}, Range{0x0483, 0x0489}, Range{0x0591, 0x05BD},   Range{0x0610, 0x061A}, Range{0x064B, 0x065F},
    Range{0x0E31, 0x0E31}, Range{0x0E34, 0x0E3A}, Range{0x0E47, 0x0E4E},   Range{0x1AB0, 0x1AFF}, Range{0x1DC0, 0x1DFF},
    Range{0x200B, 0x200F}, Range{0x20D0, 0x20FF}, Range{0x302A, 0x302D},   Range{0x3099, 0x309A}, Range{0xFE00, 0xFE0F},
    Range{0xFE20, 0xFE2F}, Range{0xFEFF, 0xFEFF}, Range{0xE0100, 0xE01EF},
};

bool within(std::span<const Range> ranges, char32_t c)
{
    const auto range = std::partition_point(ranges.begin(), ranges.end(), [c](const Range& r) { return r.last < c; });
    return range != ranges.end() && range->first <= c;
}

int columnsOf(wchar_t character)
{
    const auto c = static_cast<char32_t>(character);
    // A mark inside a wide block has no width of its own, so the marks are asked first.
    return within(zeroWidth, c) ? 0 : within(wide, c) ? 2 : 1;
}

bool isRawByte(wchar_t c)
{
    return c >= 0xDC80 && c <= 0xDCFF;
}

template <class Bad>
std::string withReplacements(std::wstring_view text, Bad bad)
{
    constexpr wchar_t replacement = 0xFFFD;
    std::wstring result(text);
    std::replace_if(result.begin(), result.end(), bad, replacement);
    return base::utf8(result);
}

}

std::string shown(std::wstring_view text)
{
    return withReplacements(text,
                            [](wchar_t c) { return isRawByte(c) || within(unprintable, static_cast<char32_t>(c)); });
}

std::string shownBytes(std::string_view bytes)
{
    return shown(base::fromHostBytes(bytes));
}

std::string jsonText(std::wstring_view text)
{
    return withReplacements(text, isRawByte);
}

std::string jsonBytes(std::string_view bytes)
{
    return jsonText(base::fromHostBytes(bytes));
}

int columnsOf(std::string_view shownText)
{
    int columns = 0;
    for (const wchar_t c : base::fromHostBytes(shownText))
        columns += columnsOf(c);
    return columns;
}

std::string fitted(std::string_view shownText, int columns)
{
    if (columns <= 0)
        return {};
    if (columnsOf(shownText) <= columns)
        return std::string(shownText);
    std::wstring kept;
    int used = 1; // the column of the ellipsis
    for (const wchar_t c : base::fromHostBytes(shownText)) {
        used += columnsOf(c);
        if (used > columns)
            break;
        kept += c;
    }
    return base::utf8(kept) + "…";
}

}
