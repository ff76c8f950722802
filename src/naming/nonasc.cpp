#include "naming/nonasc.h"

#include "base/text.h"

namespace tonquay::naming {

namespace {

constexpr std::wstring_view forbidden = L"\\/?:*\"><|";

}

std::wstring nonasc(std::wstring_view source)
{
    std::wstring result(source);
    std::erase_if(result, [&](wchar_t c) { return forbidden.find(c) != std::wstring_view::npos; });
    return std::wstring(base::trim(result));
}

bool fitsFileName(std::wstring_view text)
{
    return text.find_first_of(forbidden) == std::wstring_view::npos;
}

}
