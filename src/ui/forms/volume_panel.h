#pragma once

#include "state/ripdeck_controls.h"
#include "ui/forms/bindings.h"

#include <QFrame>

class QSlider;

namespace tonquay::ui {

/// Volume and balance of what is listened to. The right button anywhere on it is the panel's own.
class VolumePanel final : public QFrame {
public:
    explicit VolumePanel(state::RipdeckControls& ripdeck, QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Direction { same, mirrored };

    QSlider& addSlider(controls::Slider& slider, const QString& name, Direction direction);
    void addCaption(const QString& text, controls::Handler<controls::MouseButton>& released, const QString& tip,
                    int row);

    state::RipdeckControls& ripdeck_;
    Bindings bindings_;
    bool writing_ = false;
};

}
