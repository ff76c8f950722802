#include "naming/nonasc.h"

#include "base/text.h"

namespace tonquay::naming {

std::wstring nonasc(std::wstring_view source)
{
    constexpr std::wstring_view forbidden = L"\\/?:*\"><|";
    std::wstring result(source);
    std::erase_if(result, [&](wchar_t c) { return forbidden.find(c) != std::wstring_view::npos; });
    return std::wstring(base::trim(result));
}

}
