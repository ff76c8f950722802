#include "naming/prefix_move.h"

#include "base/text.h"

#include <array>

namespace tonquay::naming {

std::wstring fixedWidth(std::wstring_view text, std::size_t width)
{
    std::wstring result(text);
    result.resize(width, L' ');
    return result;
}

std::wstring prefixMoved(std::wstring_view name)
{
    constexpr std::array<std::wstring_view, 3> prefixes{L"A ", L"AN ", L"THE "};
    std::wstring moved = fixedWidth(name, nameWidth);
    for (const std::wstring_view prefix : prefixes) {
        if (!base::upper(moved).starts_with(prefix))
            continue;
        const std::wstring own = moved.substr(0, prefix.size());
        std::wstring rest(base::trim(std::wstring_view(moved).substr(prefix.size())));
        moved = fixedWidth(rest.append(L", ").append(own), nameWidth);
    }
    return moved;
}

}
