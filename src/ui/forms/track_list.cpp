#include "ui/forms/track_list.h"

#include "ui/forms/input.h"
#include "ui/forms/track_columns.h"
#include "ui/forms/track_row.h"
#include "ui/skin/colours.h"

#include <QApplication>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QPainter>
#include <QToolTip>

#include <utility>

namespace tonquay::ui {

namespace {

QVariant trackCell(const QString& text, int, int role)
{
    if (role == Qt::DisplayRole)
        return text;
    if (role != Qt::AccessibleTextRole)
        return {};
    const auto columns = columnsOf(text);
    return QStringLiteral("%1, %2, %3, %4 MB").arg(columns[0], columns[3], columns[1], columns[2]);
}

}

TrackList::TrackList(controls::MultiSelectList& list, QWidget* parent) : MultiSelectView(list, trackCell, parent)
{
    setObjectName(QStringLiteral("tracks"));
    setAccessibleName(QStringLiteral("Tracks"));
    setAccessibleDescription(QStringLiteral("Space selects a track, Control A all of them"));
    setItemDelegate(std::make_unique<TrackRow>(this).release());
    setSelectionMode(QAbstractItemView::MultiSelection);
    setMouseTracking(true);
    setFrameShape(QFrame::NoFrame);
    bindings_.show(list.enabled, [this](const bool& enabled) {
        // Else the keyboard would go to a key that happens to be next, perhaps one that ends the program.
        if (!enabled && hasFocus()) {
            hadFocus_ = true;
            window()->setFocus();
        }
        setEnabled(enabled);
        if (enabled && std::exchange(hadFocus_, false))
            setFocus();
    });
    bindings_.show(list.busyPointer,
                   [this](const bool& busy) { viewport()->setCursor(busy ? Qt::BusyCursor : Qt::ArrowCursor); });
    bindings_.show(list.fontName, [this](const std::wstring& family) {
        QFont font = QApplication::font();
        if (!family.empty())
            font.setFamilies({qtText(family), font.family()});
        setFont(font);
    });
}

void TrackList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        MultiSelectView::mousePressEvent(event);
        list().mouseDown(controls::MouseButton::left);
        return;
    }
    const QModelIndex under = indexAt(event->pos());
    if (event->button() != Qt::RightButton || !under.isValid()) {
        // Below the last row it is the window that is pressed, whose menu opens.
        event->ignore();
        return;
    }
    selectionModel()->setCurrentIndex(under, QItemSelectionModel::NoUpdate);
    list().mouseDown(controls::MouseButton::right);
}

void TrackList::paintEvent(QPaintEvent* event)
{
    MultiSelectView::paintEvent(event);
    if (!isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(colours::muted);
    painter.drawText(viewport()->rect().adjusted(24, 0, -24, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     QStringLiteral("No tracks. Put an audio CD in, or go to the launcher with the Player key to open "
                                    "a disc image."));
}

bool TrackList::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return MultiSelectView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex under = indexAt(help->pos());
    const QString title = under.isValid() ? TrackRow::elidedTitle(under, visualRect(under), fontMetrics()) : QString();
    const QString tip = title.isEmpty() ? qtText(list().toolTip) : title;
    QToolTip::showText(help->globalPos(), tip.toHtmlEscaped(), viewport(), visualRect(under));
    return true;
}

TrackHeadings::TrackHeadings(std::array<controls::Label, 4>& labels, QWidget* parent) : QWidget(parent), labels_(labels)
{
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    font.setWeight(QFont::DemiBold);
    setFont(font);
    for (controls::Label& label : labels_)
        bindings_.keep(label.caption.follow([this](const std::wstring&) { update(); }));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize TrackHeadings::sizeHint() const
{
    return {200, fontMetrics().height() + 16};
}

void TrackHeadings::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(colours::border);
    painter.drawLine(0, height() - 1, width(), height() - 1);
    painter.setPen(colours::muted);
    const auto places = columnPlaces(rect(), QFontMetrics(QApplication::font()));
    for (std::size_t i = 0; i < trackColumns; ++i) {
        QRect place = places[i];
        // A heading may be wider than the numbers below it.
        const int wanted = fontMetrics().horizontalAdvance(qtText(labels_[i].caption));
        if (columnAlignment(i).testFlag(Qt::AlignRight) && wanted > place.width())
            place.setLeft(place.right() - wanted);
        painter.drawText(place, static_cast<int>(columnAlignment(i)), qtText(labels_[i].caption));
    }
}

}
