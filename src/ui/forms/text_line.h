#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>

#include <functional>

namespace tonquay::ui {

/// One line of text that never changes the layout around it: what does not fit is elided and shows whole in the tool
/// tip. Setting a text draws this line anew and nothing else.
class TextLine : public QWidget {
public:
    struct Look {
        QColor colour;
        qreal scale = 1; ///< of the application's font
        int weight = 400;
        Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
        QString widest = {}; ///< the text that it is made wide enough for; empty: as wide as it gets
        bool spaced = false; ///< capitals with room between
        bool fits = false;   ///< as wide as its text, for one that hardly ever changes; up to a bound
    };

    explicit TextLine(Look look, QWidget* parent = nullptr);

    void setText(const QString& text);
    const QString& text() const { return text_; }
    void setColour(const QColor& colour);
    /// 0: by the look.
    void setPoints(int points);
    void setFamily(const QString& family);
    void setTip(const QString& tip);
    void setClickable(bool clickable);

    /// Logical pixels that the whole text takes.
    int textWidth() const;

    std::function<void(Qt::MouseButton)> pressed;
    std::function<void(Qt::MouseButton)> released;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void makeFont();

    Look look_;
    QString text_;
    QString tip_;
    QFont font_; ///< not the widget's own, which a style sheet puts back when it comes to rule
    int points_ = 0;
    QString family_;
    bool clickable_ = false;
};

}
