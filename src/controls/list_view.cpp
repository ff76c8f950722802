#include "controls/list_view.h"

#include <utility>

namespace tonquay::controls {

void ListView::clear()
{
    columns_.clear();
    rows_.clear();
    selected_ = -1;
    followers_.tell();
}

void ListView::addColumn(std::wstring heading)
{
    columns_.push_back(std::move(heading));
    followers_.tell();
}

void ListView::addRow(std::wstring key, std::vector<std::wstring> cells)
{
    rows_.push_back({std::move(key), std::move(cells)});
    followers_.tell();
}

ListView::Row ListView::row(std::int32_t index) const
{
    return index >= 0 && index < rowCount() ? rows_[static_cast<std::size_t>(index)] : Row{};
}

void ListView::select(std::int32_t index)
{
    if (index < -1 || index >= rowCount())
        return;
    selected_ = index;
    followers_.tell();
}

}
