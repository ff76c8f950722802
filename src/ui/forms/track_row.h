#pragma once

#include <QStyledItemDelegate>

namespace tonquay::ui {

/// Draws one row of the track list: a tinted plate with a mark at its left where it is selected, a frame where the
/// cursor is.
class TrackRow final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The whole title where the row has no room for it, else nothing.
    static QString elidedTitle(const QModelIndex& index, const QRect& row, const QFontMetrics& metrics);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}
