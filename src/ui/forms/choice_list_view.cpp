#include "ui/forms/choice_list_view.h"

#include "ui/forms/input.h"

namespace tonquay::ui {

ChoiceListView::ChoiceListView(controls::ChoiceList& list, QWidget* parent) : QListWidget(parent), list_(list)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    bindings_.show(list.enabled, [this](const bool& enabled) { setEnabled(enabled); });
    bindings_.keep(list.follow([this] { takeOver(); }));
    takeOver();
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!showing_)
            list_.setIndex(row);
    });
    // Qt tells of a double click and of Enter alike.
    connect(this, &QListWidget::itemActivated, this, [this] { list_.doubleClick(); });
}

void ChoiceListView::takeOver()
{
    const Writing showing(showing_);
    QStringList texts;
    for (std::int32_t row = 0; row < list_.rowCount(); ++row)
        texts.append(qtText(list_.row(row).text));
    QStringList shown;
    for (int row = 0; row < count(); ++row)
        shown.append(item(row)->text());
    if (texts != shown) {
        clear();
        addItems(texts);
        for (int row = 0; row < count(); ++row)
            item(row)->setToolTip(texts[row]);
    }
    setCurrentRow(list_.index());
}

/// Rows that were measured before it had its style would lie too close.
void ChoiceListView::showEvent(QShowEvent* event)
{
    QListWidget::showEvent(event);
    scheduleDelayedItemsLayout();
}

QSize ChoiceListView::sizeHint() const
{
    constexpr int rows = 3;
    constexpr int rowPadding = 8;
    constexpr int frame = 6;
    return {200, rows * (fontMetrics().height() + rowPadding) + frame};
}

}
