#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace tonquay::ui {

/// A small lamp with its caption.
class StatusLight final : public QWidget {
public:
    explicit StatusLight(const QString& name, QWidget* parent = nullptr);

    void setCaption(const QString& caption);
    /// An invalid colour is a lamp that is off.
    void setLamp(const QColor& lamp);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void describe();

    QString caption_;
    QString widest_;
    QColor lamp_;
};

}
