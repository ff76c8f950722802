#pragma once

#include "controls/displays.h"
#include "ui/forms/bindings.h"

#include <QWidget>

namespace tonquay::ui {

/// One channel of a level meter as a row of segments; the last ones, near full scale, have a colour of their own.
class LevelMeter final : public QWidget {
public:
    /// `letter` stands before it ("L"), `name` is read out.
    LevelMeter(controls::VuMeter& meter, const QString& letter, const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show(double level);

    QString letter_;
    int lit_ = 0;
    Bindings bindings_;
};

}
