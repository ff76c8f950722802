#include "controls/lists.h"

#include "base/text.h"

#include <algorithm>

namespace tonquay::controls {

Row ChoiceList::row(std::int32_t index) const
{
    if (index < 0 || index >= rowCount())
        return {};
    return rows_[static_cast<std::size_t>(index)];
}

void ChoiceList::add(std::wstring text, std::int32_t itemData)
{
    rows_.push_back({std::move(text), itemData});
    followers_.tell();
}

void ChoiceList::addSorted(std::wstring text, std::int32_t itemData)
{
    const auto place =
        std::ranges::upper_bound(rows_, base::upper(text), {}, [](const Row& row) { return base::upper(row.text); });
    if (place - rows_.begin() <= index_)
        ++index_;
    rows_.insert(place, {std::move(text), itemData});
    followers_.tell();
}

void ChoiceList::remove(std::int32_t index)
{
    if (index < 0 || index >= rowCount())
        return;
    rows_.erase(rows_.begin() + index);
    if (index < index_ || index_ == rowCount())
        --index_;
    followers_.tell();
}

void ChoiceList::clear()
{
    rows_.clear();
    index_ = -1;
    followers_.tell();
}

void ChoiceList::setIndex(std::int32_t index)
{
    if (index < -1 || index >= rowCount())
        return;
    index_ = index;
    followers_.tell();
    click();
}

std::wstring MultiSelectList::row(std::int32_t index) const
{
    return has(index) ? rows_[static_cast<std::size_t>(index)].text : std::wstring();
}

void MultiSelectList::add(std::wstring text)
{
    rows_.push_back({std::move(text)});
    followers_.tell();
}

void MultiSelectList::append(std::vector<std::wstring> texts)
{
    for (std::wstring& text : texts)
        rows_.push_back({std::move(text)});
    followers_.tell();
}

void MultiSelectList::removeSelected()
{
    std::erase_if(rows_, [](const Entry& entry) { return entry.selected; });
    cursor_ = std::min(cursor_, rowCount() - 1);
    topRow_ = std::clamp(topRow_, 0, std::max(rowCount() - 1, 0));
    followers_.tell();
}

void MultiSelectList::clear()
{
    rows_.clear();
    cursor_ = -1;
    topRow_ = 0;
    followers_.tell();
}

bool MultiSelectList::isSelected(std::int32_t index) const
{
    return has(index) && rows_[static_cast<std::size_t>(index)].selected;
}

void MultiSelectList::select(std::int32_t index, bool selected)
{
    if (!has(index))
        return;
    rows_[static_cast<std::size_t>(index)].selected = selected;
    cursor_ = index;
    followers_.tell();
}

std::int32_t MultiSelectList::selectedCount() const
{
    return static_cast<std::int32_t>(std::ranges::count(rows_, true, &Entry::selected));
}

void MultiSelectList::deselectAll()
{
    for (Entry& entry : rows_)
        entry.selected = false;
    followers_.tell();
}

void MultiSelectList::setCursor(std::int32_t index)
{
    if (index != -1 && !has(index))
        return;
    cursor_ = index;
    followers_.tell();
}

void MultiSelectList::scrollTo(std::int32_t index)
{
    topRow_ = has(index) ? index : 0;
    scrolled.tell();
}

}
