#include "ui/forms/level_meter.h"

#include "ui/skin/colours.h"

#include <QApplication>
#include <QPainter>

#include <cmath>

namespace tonquay::ui {

namespace {

constexpr int segments = 36;
constexpr int firstLoud = 28;
constexpr int letterWidth = 18;

/// The part of the meter for a part of full scale: by loudness, so that soft music moves it too. 42 dB in all.
double shownPart(double level)
{
    constexpr double range = 42;
    if (level <= 0)
        return 0;
    return std::max(0.0, 1 + 20 * std::log10(level) / range);
}

}

LevelMeter::LevelMeter(controls::VuMeter& meter, const QString& letter, const QString& name, QWidget* parent)
    : QWidget(parent),
      letter_(letter)
{
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 0.82);
    font.setWeight(QFont::DemiBold);
    setFont(font);
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    bindings_.keep(meter.follow([this](const std::optional<double>& level) { show(level.value_or(0)); }));
    show(meter.level().value_or(0));
}

void LevelMeter::show(double level)
{
    const int lit = static_cast<int>(std::lround(shownPart(level) * segments));
    if (lit == lit_)
        return;
    lit_ = lit;
    update();
}

QSize LevelMeter::sizeHint() const
{
    return {300, std::max(fontMetrics().height(), 13)};
}

QSize LevelMeter::minimumSizeHint() const
{
    return {120, sizeHint().height()};
}

void LevelMeter::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), colours::display);
    painter.setPen(colours::muted);
    painter.drawText(QRect(0, 0, letterWidth, height()), Qt::AlignLeft | Qt::AlignVCenter, letter_);
    const double pitch = static_cast<double>(width() - letterWidth) / segments;
    const double barHeight = std::min(height(), 12);
    const double top = (height() - barHeight) / 2;
    for (int i = 0; i < segments; ++i) {
        const QColor& lit = i >= firstLoud ? colours::accent : colours::on;
        painter.fillRect(QRectF(letterWidth + i * pitch, top, pitch * 0.68, barHeight),
                         i < lit_ ? lit : colours::groove);
    }
}

}
