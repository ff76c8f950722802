#include "ui/forms/text_line.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <utility>

namespace tonquay::ui {

TextLine::TextLine(Look look, QWidget* parent) : QWidget(parent), look_(std::move(look))
{
    makeFont();
    const bool takesRoom = look_.widest.isEmpty() && !look_.fits;
    setSizePolicy(takesRoom ? QSizePolicy::Ignored : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TextLine::makeFont()
{
    QFont font = QApplication::font();
    if (points_ > 0)
        font.setPointSize(points_);
    else
        font.setPointSizeF(font.pointSizeF() * look_.scale);
    font.setWeight(static_cast<QFont::Weight>(look_.weight));
    if (look_.spaced)
        font.setLetterSpacing(QFont::PercentageSpacing, 108);
    if (!family_.isEmpty())
        font.setFamilies({family_, font.family()});
    font_ = font;
}

void TextLine::setText(const QString& text)
{
    if (text == text_)
        return;
    text_ = text;
    setAccessibleDescription(text);
    if (look_.fits)
        updateGeometry();
    update();
}

void TextLine::setColour(const QColor& colour)
{
    look_.colour = colour;
    update();
}

void TextLine::setPoints(int points)
{
    points_ = points;
    makeFont();
    updateGeometry();
    update();
}

void TextLine::setFamily(const QString& family)
{
    family_ = family;
    makeFont();
    update();
}

void TextLine::setTip(const QString& tip)
{
    tip_ = tip;
}

void TextLine::setClickable(bool clickable)
{
    clickable_ = clickable;
    setCursor(clickable ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

int TextLine::textWidth() const
{
    return QFontMetrics(font_).horizontalAdvance(text_);
}

QSize TextLine::sizeHint() const
{
    // A little more than the widest text takes, for letters that lean out of their place.
    constexpr int widestFitting = 150;
    if (look_.fits)
        return {std::min(textWidth() + 2, widestFitting), QFontMetrics(font_).height()};
    const int width = look_.widest.isEmpty() ? 60 : QFontMetrics(font_).horizontalAdvance(look_.widest) + 6;
    return {width, QFontMetrics(font_).height()};
}

QSize TextLine::minimumSizeHint() const
{
    return {look_.widest.isEmpty() ? 0 : sizeHint().width(), sizeHint().height()};
}

void TextLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setFont(font_);
    painter.setPen(isEnabled() ? look_.colour
                               : QColor(look_.colour.red(), look_.colour.green(), look_.colour.blue(), 130));
    painter.drawText(rect(), static_cast<int>(look_.alignment),
                     QFontMetrics(font_).elidedText(text_, Qt::ElideRight, width()));
}

bool TextLine::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const bool elided = textWidth() > width();
    const QString tip = elided && !tip_.isEmpty() ? text_ + '\n' + tip_ : elided ? text_ : tip_;
    if (tip.isEmpty())
        event->ignore();
    else
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip.toHtmlEscaped().replace('\n', "<br>"),
                           this);
    return true;
}

void TextLine::mousePressEvent(QMouseEvent* event)
{
    if (!pressed || !clickable_) {
        event->ignore();
        return;
    }
    pressed(event->button());
}

void TextLine::mouseReleaseEvent(QMouseEvent* event)
{
    if (released && rect().contains(event->pos()))
        released(event->button());
}

}
