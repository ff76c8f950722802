#include "ui/forms/typed_name.h"

#include "base/text.h"

#include <algorithm>

namespace tonquay::ui {

std::wstring typedText(std::wstring_view text)
{
    std::wstring typed(text);
    for (wchar_t& c : typed) {
        constexpr wchar_t firstPlain = 0x20;
        constexpr wchar_t firstHighControl = 0x7F;
        constexpr wchar_t lastHighControl = 0x9F;
        constexpr wchar_t lineSeparator = 0x2028;
        constexpr wchar_t paragraphSeparator = 0x2029;
        if (c == L'"')
            c = L'\'';
        else if (c < firstPlain || (c >= firstHighControl && c <= lastHighControl) || c == lineSeparator ||
                 c == paragraphSeparator)
            c = L' ';
    }
    return typed;
}

std::wstring typedTag(std::wstring_view text)
{
    std::wstring typed(base::trim(typedText(text)));
    while (!typed.empty() && (typed.back() == L'\\' || typed.back() == L' '))
        typed.pop_back();
    return typed;
}

std::wstring typedFolderName(std::wstring_view text)
{
    // What a file name would lose is no part of it.
    constexpr std::wstring_view dropped = L"\\/?:*\"<>| .";
    std::wstring typed = typedText(text);
    const bool dotsOnly = std::ranges::all_of(typed, [&](wchar_t c) { return dropped.find(c) != dropped.npos; });
    return dotsOnly ? std::wstring() : typed;
}

}
