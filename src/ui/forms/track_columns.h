#pragma once

#include <QFontMetrics>
#include <QRect>
#include <QString>

#include <array>

namespace tonquay::ui {

/// The four columns of the track list: number, time, size, title.
inline constexpr std::size_t trackColumns = 4;

/// A row of the list as its columns.
std::array<QString, trackColumns> columnsOf(const QString& row);

/// Where the columns lie in a row of this place, for texts of this size.
std::array<QRect, trackColumns> columnPlaces(const QRect& row, const QFontMetrics& metrics);

Qt::Alignment columnAlignment(std::size_t column);

}
