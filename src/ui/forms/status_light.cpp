#include "ui/forms/status_light.h"

#include "ui/skin/colours.h"

#include <QApplication>
#include <QPainter>

namespace tonquay::ui {

namespace {

constexpr int lampSize = 9;
constexpr int gap = 8;

}

StatusLight::StatusLight(const QString& name, QWidget* parent) : QWidget(parent), widest_(name.toUpper())
{
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 0.82);
    font.setWeight(QFont::DemiBold);
    font.setLetterSpacing(QFont::PercentageSpacing, 108);
    setFont(font);
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    describe();
}

void StatusLight::setCaption(const QString& caption)
{
    const QString upper = caption.trimmed().toUpper();
    if (upper == caption_)
        return;
    caption_ = upper;
    if (fontMetrics().horizontalAdvance(upper) > fontMetrics().horizontalAdvance(widest_)) {
        widest_ = upper;
        updateGeometry();
    }
    describe();
    update();
}

void StatusLight::setLamp(const QColor& lamp)
{
    if (lamp == lamp_)
        return;
    lamp_ = lamp;
    describe();
    update();
}

void StatusLight::describe()
{
    setAccessibleDescription(caption_ + (lamp_.isValid() ? ": on" : ": off"));
}

QSize StatusLight::sizeHint() const
{
    return {lampSize + gap + fontMetrics().horizontalAdvance(widest_) + 2, fontMetrics().height()};
}

void StatusLight::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(lamp_.isValid() ? lamp_ : colours::border.lighter(130));
    painter.drawEllipse(QRectF(0.5, (height() - lampSize) / 2.0, lampSize, lampSize));
    painter.setPen(lamp_.isValid() ? colours::text : colours::dim);
    painter.drawText(rect().adjusted(lampSize + gap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, caption_);
}

}
