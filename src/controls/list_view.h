#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tonquay::controls {

/// A table with headed columns, of which one row is selected. Nothing that code does fires an event.
class ListView {
public:
    struct Row {
        std::wstring key;
        std::vector<std::wstring> cells; ///< the first is the row's text
    };

    Handler<> pick; ///< a click in it, or a key let go in it; the row is selected by then

    /// Neither rows nor columns.
    void clear();
    /// Other columns and rows in place of all that was there; no row is selected.
    void fill(std::vector<std::wstring> columns, std::vector<Row> rows);

    const std::vector<std::wstring>& columns() const { return columns_; }
    std::int32_t rowCount() const { return static_cast<std::int32_t>(rows_.size()); }
    /// A row outside the table is an empty one.
    Row row(std::int32_t index) const;

    /// The selected row, -1 for none.
    std::int32_t selected() const { return selected_; }
    /// -1 or a row; another index changes nothing. Scrolls it into view.
    void select(std::int32_t index);

    /// Told of every change.
    Following follow(std::function<void()> follower) { return followers_.add(std::move(follower)); }

private:
    std::vector<std::wstring> columns_;
    std::vector<Row> rows_;
    std::int32_t selected_ = -1;
    Followers<> followers_;
};

}
