#include "ui/forms/table_view.h"

#include "ui/forms/input.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include <memory>

namespace tonquay::ui {

TableView::TableView(controls::ListView& list) : list_(list)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(true);
    bindings_.keep(list.follow([this] { takeOver(); }));
    takeOver();
}

void TableView::takeOver()
{
    if (writing_)
        return;
    const Writing showing(showing_);
    showRows();
    if (QTreeWidgetItem* item = topLevelItem(list_.selected())) {
        setCurrentItem(item);
        scrollToItem(item);
    }
}

void TableView::showRows()
{
    clear();
    QStringList headings;
    for (const std::wstring& heading : list_.columns())
        headings.append(qtText(heading).trimmed());
    setColumnCount(static_cast<int>(headings.size()));
    setHeaderLabels(headings);
    for (std::int32_t row = 0; row < list_.rowCount(); ++row) {
        auto item = std::make_unique<QTreeWidgetItem>();
        int column = 0;
        for (const std::wstring& cell : list_.row(row).cells) {
            item->setText(column, qtText(cell));
            item->setToolTip(column, toolTip());
            ++column;
        }
        addTopLevelItem(item.release());
    }
    constexpr int breath = 24;
    for (int column = 0; column + 1 < columnCount(); ++column) {
        resizeColumnToContents(column);
        setColumnWidth(column, columnWidth(column) + breath);
    }
}

void TableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeWidget::currentChanged(current, previous);
    if (showing_ || !current.isValid())
        return;
    const Writing writing(writing_);
    list_.select(current.row());
}

void TableView::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        list_.pick();
}

void TableView::keyReleaseEvent(QKeyEvent* event)
{
    QTreeWidget::keyReleaseEvent(event);
    list_.pick();
}

}
