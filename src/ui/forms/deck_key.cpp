#include "ui/forms/deck_key.h"

#include "state/ripdeck_controls.h"
#include "ui/forms/input.h"
#include "ui/skin/colours.h"
#include "ui/skin/icons.h"

#include <QApplication>
#include <QPainter>

#include <utility>

namespace tonquay::ui {

namespace {

constexpr int padding = 12;
constexpr double radius = 9;

}

DeckKey::DeckKey(Look look, const QString& name, const QKeySequence& key, QWidget* parent)
    : QPushButton(parent),
      look_(std::move(look)),
      icon_(ui::icon(look_.picture, look_.plate == Plate::accent ? colours::accentText : colours::text)),
      runningIcon_(ui::icon(look_.picture, colours::accent))
{
    setAccessibleName(name);
    setShortcut(key);
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void DeckKey::setNote(const QString& note)
{
    if (note == look_.note)
        return;
    look_.note = note;
    update();
}

void DeckKey::setTip(const QString& tip)
{
    setAccessibleDescription(tip);
    const QString accelerator = shortcut().toString(QKeySequence::NativeText);
    setToolTip(accelerator.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, accelerator));
}

void DeckKey::setHeld(bool held)
{
    held_ = held;
    update();
}

void DeckKey::setRunning(bool running)
{
    running_ = running;
    update();
}

QFont DeckKey::captionFont() const
{
    QFont font = QApplication::font();
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont DeckKey::noteFont() const
{
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 0.85);
    return font;
}

QSize DeckKey::sizeHint() const
{
    const int line = QFontMetrics(captionFont()).height();
    if (look_.caption.isEmpty())
        return {look_.iconSize + 2 * padding + 8, look_.iconSize + 2 * padding};
    const int text = std::max(QFontMetrics(captionFont()).horizontalAdvance(look_.caption),
                              QFontMetrics(noteFont()).horizontalAdvance(look_.note));
    return {look_.iconSize + 3 * padding + text, line + QFontMetrics(noteFont()).height() + padding};
}

QSize DeckKey::minimumSizeHint() const
{
    if (look_.caption.isEmpty())
        return {look_.iconSize + padding, look_.iconSize + padding};
    const int text = QFontMetrics(captionFont()).horizontalAdvance(look_.caption);
    return {look_.iconSize + 3 * padding + text, QFontMetrics(captionFont()).height() + 8};
}

QColor DeckKey::inkColour() const
{
    if (!isEnabled())
        return colours::dim;
    if (look_.plate != Plate::accent)
        return colours::text;
    return running_ ? colours::accent : colours::accentText;
}

void DeckKey::paintPlate(QPainter& painter) const
{
    const bool down = isDown() || held_;
    QColor plate = down ? colours::keyDown : hovered_ ? colours::keyHover : colours::key;
    QColor edge = colours::border;
    if (look_.plate == Plate::accent && running_) {
        plate = colours::keyDown;
        edge = colours::accent;
    } else if (look_.plate == Plate::accent) {
        plate = !isEnabled() ? colours::key
                : down       ? colours::accent.darker(118)
                : hovered_   ? colours::accent.lighter(108)
                             : colours::accent;
        edge = plate;
    } else if (look_.plate == Plate::flat && !down && !hovered_) {
        plate = Qt::transparent;
        edge = Qt::transparent;
    }
    if (running_)
        edge = colours::accent;
    if (hasFocus())
        edge = look_.plate == Plate::accent ? colours::text : colours::on;
    painter.setPen(QPen(edge, hasFocus() || running_ ? 1.6 : 1));
    painter.setBrush(plate);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
}

void DeckKey::paintTexts(QPainter& painter, const QRect& area, const QColor& colour) const
{
    const QFontMetrics caption(captionFont());
    const QFontMetrics note(noteFont());
    const bool both = !look_.note.isEmpty() && area.height() >= caption.height() + note.height() + 4;
    const int height = caption.height() + (both ? note.height() + 1 : 0);
    QRect line(area.left(), area.top() + (area.height() - height) / 2, area.width(), caption.height());
    painter.setPen(colour);
    painter.setFont(captionFont());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     caption.elidedText(look_.caption, Qt::ElideRight, line.width()));
    if (!both)
        return;
    line = QRect(area.left(), line.bottom() + 2, area.width(), note.height());
    QColor soft = colour;
    soft.setAlphaF(look_.plate == Plate::accent ? 0.8F : 0.62F);
    painter.setPen(soft);
    painter.setFont(noteFont());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, note.elidedText(look_.note, Qt::ElideRight, line.width()));
}

void DeckKey::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPlate(painter);
    const QColor colour = inkColour();
    const int size = std::min(look_.iconSize, height() - 8);
    const int left = look_.caption.isEmpty() ? (width() - size) / 2 : padding;
    const QIcon& picture = look_.plate == Plate::accent && running_ ? runningIcon_ : icon_;
    picture.paint(&painter, left, (height() - size) / 2, size, size, Qt::AlignCenter,
                  isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (!look_.caption.isEmpty())
        paintTexts(painter, rect().adjusted(padding + size + padding - 2, 2, -6, -2), colour);
}

void DeckKey::enterEvent(QEnterEvent* event)
{
    hovered_ = isEnabled();
    update();
    QPushButton::enterEvent(event);
}

void DeckKey::leaveEvent(QEvent* event)
{
    hovered_ = false;
    update();
    QPushButton::leaveEvent(event);
}

void bindKey(DeckKey& key, controls::Image& image, Bindings& bindings)
{
    forwardPresses(key, image);
    bindings.show(image.picture, [&key](const int& picture) {
        key.setHeld(picture == state::pressedLook);
        key.setRunning(picture == state::runningLook);
    });
    bindings.show(image.toolTip, [&key](const std::wstring& tip) { key.setTip(qtText(tip)); });
    bindings.show(image.enabled, [&key](const bool& enabled) { key.setEnabled(enabled); });
    bindVisible(key, image.visible, bindings);
}

}
