#include "ui/forms/track_columns.h"

#include <QStringList>

namespace tonquay::ui {

namespace {

constexpr int margin = 18;
constexpr int gap = 26;

}

std::array<QString, trackColumns> columnsOf(const QString& row)
{
    std::array<QString, trackColumns> columns;
    const QStringList parts = row.split('\t');
    // A title may hold a tab of its own.
    for (qsizetype i = 0; i < parts.size(); ++i) {
        QString& column = columns[std::min<std::size_t>(static_cast<std::size_t>(i), trackColumns - 1)];
        column += (column.isEmpty() ? "" : " ") + parts[i].trimmed();
    }
    return columns;
}

std::array<QRect, trackColumns> columnPlaces(const QRect& row, const QFontMetrics& metrics)
{
    const int widths[] = {metrics.horizontalAdvance(QStringLiteral("Track 000")),
                          metrics.horizontalAdvance(QStringLiteral("000:00")),
                          metrics.horizontalAdvance(QStringLiteral("Size, MB ")), 0};
    std::array<QRect, trackColumns> places;
    int left = row.left() + margin;
    for (std::size_t i = 0; i < trackColumns; ++i) {
        const bool last = i + 1 == trackColumns;
        const int width = last ? std::max(0, row.right() - left - margin) : widths[i];
        places[i] = QRect(left, row.top(), width, row.height());
        left += width + gap;
    }
    return places;
}

Qt::Alignment columnAlignment(std::size_t column)
{
    const bool number = column == 1 || column == 2;
    return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

}
