#include "ui/forms/track_row.h"

#include "ui/forms/track_columns.h"
#include "ui/skin/colours.h"

#include <QAbstractItemView>
#include <QPainter>

namespace tonquay::ui {

namespace {

constexpr int inset = 6;

}

QString TrackRow::elidedTitle(const QModelIndex& index, const QRect& row, const QFontMetrics& metrics)
{
    const QString title = columnsOf(index.data().toString())[trackColumns - 1];
    const QRect place = columnPlaces(row, metrics)[trackColumns - 1];
    return metrics.horizontalAdvance(title) > place.width() ? title : QString();
}

QSize TrackRow::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {100, option.fontMetrics.height() + 12};
}

void TrackRow::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    const QRectF plate = QRectF(option.rect).adjusted(inset + 0.5, 1.5, -inset - 0.5, -1.5);
    painter->setPen(Qt::NoPen);
    if (selected || option.state.testFlag(QStyle::State_MouseOver)) {
        painter->setBrush(selected ? colours::selection : colours::key);
        painter->drawRoundedRect(plate, 6, 6);
    }
    if (selected) {
        painter->setBrush(enabled ? colours::on : colours::dim);
        painter->drawRoundedRect(QRectF(plate.left(), plate.top() + 4, 4, plate.height() - 8), 2, 2);
    }
    // The view knows the cursor also while the keyboard is elsewhere.
    const auto* view = static_cast<const QAbstractItemView*>(option.widget);
    if (view != nullptr && view->currentIndex() == index) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(view->hasFocus() ? colours::accent : colours::dim, 1.2));
        painter->drawRoundedRect(plate, 6, 6);
    }
    const auto columns = columnsOf(index.data().toString());
    const auto places = columnPlaces(option.rect, option.fontMetrics);
    for (std::size_t i = 0; i < trackColumns; ++i) {
        QColor colour = i == 2 ? colours::muted : colours::text;
        if (!enabled)
            colour = selected ? colours::muted : colours::dim;
        painter->setPen(colour);
        painter->drawText(places[i], static_cast<int>(columnAlignment(i)),
                          option.fontMetrics.elidedText(columns[i], Qt::ElideRight, places[i].width()));
    }
    painter->restore();
}

}
