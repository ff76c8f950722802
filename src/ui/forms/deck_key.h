#pragma once

#include "controls/label.h"
#include "ui/forms/bindings.h"

#include <QColor>
#include <QIcon>
#include <QPushButton>

namespace tonquay::ui {

/// A key of the main window: a rounded plate with a picture, and with a caption and a smaller line below it where there
/// is room. It is drawn by itself, since a style sheet for each of its states would cost more than its drawing.
class DeckKey : public QPushButton {
public:
    enum class Plate { plain, accent, flat };

    struct Look {
        QString picture;      ///< of the icon set
        QString caption = {}; ///< empty: the picture alone
        QString note = {};    ///< the line below, left out where the key is too low
        Plate plate = Plate::plain;
        int iconSize = 20;
    };

    /// `name` is read out; `key` is the accelerator, also told in the tool tip.
    DeckKey(Look look, const QString& name, const QKeySequence& key, QWidget* parent = nullptr);

    void setNote(const QString& note);
    void setTip(const QString& tip);
    /// Drawn as held although nobody presses it.
    void setHeld(bool held);
    /// Its work is going on.
    void setRunning(bool running);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QFont captionFont() const;
    QFont noteFont() const;
    QColor inkColour() const;
    void paintPlate(QPainter& painter) const;
    void paintTexts(QPainter& painter, const QRect& area, const QColor& colour) const;

    Look look_;
    QIcon icon_;
    QIcon runningIcon_; ///< of an accent key at work
    bool held_ = false;
    bool running_ = false;
    bool hovered_ = false;
};

/// Has a key show what its control says of itself (looks, tool tip, whether it is there and can be used), and press it.
void bindKey(DeckKey& key, controls::Image& image, Bindings& bindings);

}
