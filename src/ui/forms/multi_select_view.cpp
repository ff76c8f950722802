#include "ui/forms/multi_select_view.h"

#include "ui/forms/input.h"

#include <QAbstractListModel>
#include <QItemSelectionModel>

#include <utility>
#include <vector>

namespace tonquay::ui {

/// The rows of the program's list as Qt asks for them.
class MultiSelectView::Rows final : public QAbstractListModel {
public:
    explicit Rows(Cell cell) : cell_(std::move(cell)) {}

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(texts_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        return cell_(texts_[static_cast<std::size_t>(index.row())], index.row(), role);
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
    }

    void takeOver(const controls::MultiSelectList& list)
    {
        std::vector<QString> texts;
        texts.reserve(static_cast<std::size_t>(list.rowCount()));
        for (std::int32_t i = 0; i < list.rowCount(); ++i)
            texts.push_back(qtText(list.row(i)));
        if (texts == texts_)
            return;
        beginResetModel();
        texts_ = std::move(texts);
        endResetModel();
    }

private:
    Cell cell_;
    std::vector<QString> texts_;
};

MultiSelectView::MultiSelectView(controls::MultiSelectList& list, Cell cell, QWidget* parent)
    : QListView(parent),
      list_(list),
      rows_(std::make_unique<Rows>(std::move(cell)))
{
    setModel(rows_.get());
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    bindings_.keep(list.follow([this] { takeOver(); }));
    bindings_.keep(list.scrolled.add([this] { showTopRow(); }));
    takeOver();
}

MultiSelectView::~MultiSelectView() = default;

bool MultiSelectView::isEmpty() const
{
    return rows_->rowCount({}) == 0;
}

void MultiSelectView::takeOver()
{
    if (writing_)
        return;
    const Writing showing(showing_);
    rows_->takeOver(list_);
    QItemSelection selection;
    for (std::int32_t i = 0; i < list_.rowCount(); ++i)
        if (list_.isSelected(i))
            selection.select(rows_->index(i), rows_->index(i));
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const QModelIndex cursor = list_.cursor() < 0 ? QModelIndex() : rows_->index(list_.cursor());
    if (currentIndex() != cursor)
        selectionModel()->setCurrentIndex(cursor, QItemSelectionModel::NoUpdate);
    viewport()->update();
}

void MultiSelectView::showTopRow()
{
    scrollTo(rows_->index(list_.topRow()), QAbstractItemView::PositionAtTop);
}

/// What was scrolled before there was a place to show it.
void MultiSelectView::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    showTopRow();
}

void MultiSelectView::writeSelection(const QItemSelection& changed, bool selected)
{
    for (const QModelIndex& index : changed.indexes())
        list_.select(index.row(), selected);
}

void MultiSelectView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    if (showing_)
        return;
    {
        const Writing writing(writing_);
        writeSelection(deselected, false);
        writeSelection(selected, true);
        list_.setCursor(currentIndex().isValid() ? currentIndex().row() : -1);
    }
    list_.click();
}

void MultiSelectView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (showing_ || !current.isValid())
        return;
    const Writing writing(writing_);
    list_.setCursor(current.row());
}

void MultiSelectView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid())
        list_.doubleClick();
}

}
