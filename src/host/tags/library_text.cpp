#include "host/tags/library_text.h"

namespace tonquay::host {

std::wstring textOf(const TagLib::String& from)
{
    const TagLib::wstring units = from.toWString();
    std::wstring result;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto unit = static_cast<char32_t>(units[i]);
        const auto next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : U'\0';
        if (unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            result.push_back(static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00)));
            ++i;
        } else {
            const bool noCharacter = unit > 0x10FFFF || (unit >= 0xD800 && unit < 0xE000);
            result.push_back(noCharacter ? L'\uFFFD' : static_cast<wchar_t>(unit));
        }
    }
    return result;
}

}
