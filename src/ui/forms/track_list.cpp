#include "ui/forms/track_list.h"

#include "ui/forms/input.h"
#include "ui/forms/track_columns.h"
#include "ui/forms/track_row.h"
#include "ui/skin/colours.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>
#include <vector>

namespace tonquay::ui {

/// The rows of the program's list as Qt asks for them.
class TrackList::Rows final : public QAbstractListModel {
public:
    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(texts_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        const QString& text = texts_[static_cast<std::size_t>(index.row())];
        if (role == Qt::DisplayRole)
            return text;
        if (role != Qt::AccessibleTextRole)
            return {};
        const auto columns = columnsOf(text);
        return QStringLiteral("%1, %2, %3, %4 MB").arg(columns[0], columns[3], columns[1], columns[2]);
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
    std::vector<QString> texts_;
};

TrackList::TrackList(controls::MultiSelectList& list, QWidget* parent)
    : QListView(parent),
      list_(list),
      rows_(std::make_unique<Rows>())
{
    setObjectName(QStringLiteral("tracks"));
    setAccessibleName(QStringLiteral("Tracks"));
    setAccessibleDescription(QStringLiteral("Space selects a track, Control A all of them"));
    setModel(rows_.get());
    setItemDelegate(std::make_unique<TrackRow>(this).release());
    setSelectionMode(QAbstractItemView::MultiSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setFrameShape(QFrame::NoFrame);
    bindings_.keep(list.follow([this] { takeOver(); }));
    bindings_.keep(list.scrolled.add([this] { showTopRow(); }));
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
    takeOver();
}

TrackList::~TrackList() = default;

void TrackList::takeOver()
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

void TrackList::showTopRow()
{
    scrollTo(rows_->index(list_.topRow()), QAbstractItemView::PositionAtTop);
}

/// What was scrolled before there was a place to show it.
void TrackList::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    showTopRow();
}

void TrackList::writeSelection(const QItemSelection& changed, bool selected)
{
    for (const QModelIndex& index : changed.indexes())
        list_.select(index.row(), selected);
}

void TrackList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    if (showing_)
        return;
    const Writing writing(writing_);
    writeSelection(deselected, false);
    writeSelection(selected, true);
    list_.setCursor(currentIndex().isValid() ? currentIndex().row() : -1);
}

void TrackList::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (showing_ || !current.isValid())
        return;
    const Writing writing(writing_);
    list_.setCursor(current.row());
}

void TrackList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QListView::mousePressEvent(event);
        list_.mouseDown(controls::MouseButton::left);
        return;
    }
    if (event->button() != Qt::RightButton)
        return;
    if (const QModelIndex under = indexAt(event->pos()); under.isValid())
        selectionModel()->setCurrentIndex(under, QItemSelectionModel::NoUpdate);
    list_.mouseDown(controls::MouseButton::right);
}

void TrackList::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (rows_->rowCount({}) > 0)
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
        return QListView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex under = indexAt(help->pos());
    const QString tip = under.isValid() ? TrackRow::elidedTitle(under, visualRect(under), fontMetrics()) : QString();
    if (tip.isEmpty())
        QToolTip::hideText();
    else
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
