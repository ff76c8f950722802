#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tonquay::controls {

/// A row and the number that rides on it.
struct Row {
    std::wstring text;
    std::int32_t itemData = 0;
};

/// Rows of which at most one is chosen: a combo box or a single-select list. Setting the index fires click, also when
/// it is the one that stood there already.
class ChoiceList {
public:
    Property<bool> enabled{true};
    Handler<> click;
    Handler<> enter;       ///< the Enter key, which goes no further
    Handler<> doubleClick; ///< on the chosen row

    std::int32_t rowCount() const { return static_cast<std::int32_t>(rows_.size()); }
    /// A row outside the list is an empty one.
    Row row(std::int32_t index) const;

    void add(std::wstring text, std::int32_t itemData = 0);
    /// Into a list that is kept sorted by its texts, without regard to case; behind equal ones. The chosen row stays
    /// the chosen one; fires nothing.
    void addSorted(std::wstring text, std::int32_t itemData = 0);
    /// A row outside the list changes nothing. When the chosen row goes, the one that takes its place is chosen, or the
    /// last one; fires nothing.
    void remove(std::int32_t index);
    /// No rows, nothing chosen; fires nothing.
    void clear();

    /// -1 for none.
    std::int32_t index() const { return index_; }
    /// -1 or a row; another index is refused and changes nothing.
    void setIndex(std::int32_t index);

    /// The chosen row; an empty one when none is.
    Row chosen() const { return row(index_); }

    /// Told of every change of rows or choice.
    Following follow(std::function<void()> follower) { return followers_.add(std::move(follower)); }

private:
    std::vector<Row> rows_;
    std::int32_t index_ = -1;
    Followers<> followers_;
};

using ComboBox = ChoiceList;

/// A list in which any rows may be selected, with a cursor that is independent of the selection. Nothing that code
/// does fires an event.
class MultiSelectList {
public:
    Property<bool> enabled{true};
    Property<std::wstring> fontName;
    Property<std::wstring> toolTip;
    Property<bool> busyPointer{false};
    Handler<MouseButton> mouseDown;
    Handler<> click;       ///< by the user, when rows and cursor are as they became
    Handler<> doubleClick; ///< likewise
    Handler<> dropped;     ///< what the user has dragged from another list was let go over it

    std::int32_t rowCount() const { return static_cast<std::int32_t>(rows_.size()); }
    /// A row outside the list is an empty text.
    std::wstring row(std::int32_t index) const;

    void add(std::wstring text);
    /// Likewise for many: whoever follows is told once.
    void append(std::vector<std::wstring> texts);
    void removeSelected();
    void clear();

    /// A row outside the list is not selected, and selecting it does nothing. Selecting or deselecting moves the cursor
    /// there.
    bool isSelected(std::int32_t index) const;
    void select(std::int32_t index, bool selected);
    std::int32_t selectedCount() const;
    void deselectAll();

    /// The row under the cursor; -1 for none.
    std::int32_t cursor() const { return cursor_; }
    void setCursor(std::int32_t index);

    std::int32_t topRow() const { return topRow_; }
    void scrollTo(std::int32_t index);

    /// Told when topRow() is to be seen at the top, wherever the cursor has led the eye.
    Followers<> scrolled;

    Following follow(std::function<void()> follower) { return followers_.add(std::move(follower)); }

private:
    struct Entry {
        std::wstring text;
        bool selected = false;
    };

    bool has(std::int32_t index) const { return index >= 0 && index < rowCount(); }

    std::vector<Entry> rows_;
    std::int32_t cursor_ = -1;
    std::int32_t topRow_ = 0;
    Followers<> followers_;
};

}
