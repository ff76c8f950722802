#include "state/mp3_row.h"

#include "base/text.h"

namespace tonquay::state {

namespace {

constexpr std::size_t blanksInRow = 150;
constexpr std::wstring_view split = L"     ";

}

std::wstring Mp3Row::text() const
{
    return name + std::wstring(blanksInRow, L' ') + folder;
}

Mp3Row mp3Row(std::wstring_view text)
{
    const std::size_t end = text.find(split);
    if (end == std::wstring_view::npos)
        return {std::wstring(base::trim(text)), {}};
    return {std::wstring(base::trim(text.substr(0, end))), std::wstring(base::trim(text.substr(end)))};
}

}
