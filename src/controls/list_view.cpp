#include "controls/list_view.h"

#include <utility>

namespace tonquay::controls {

void ListView::clear()
{
    fill({}, {});
}

void ListView::fill(std::vector<std::wstring> columns, std::vector<Row> rows)
{
    columns_ = std::move(columns);
    rows_ = std::move(rows);
    selected_ = -1;
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
