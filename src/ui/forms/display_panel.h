#pragma once

#include "state/ripdeck_controls.h"
#include "state/settings.h"
#include "ui/forms/bindings.h"

#include <QFrame>

class QBoxLayout;

namespace tonquay::ui {

class StatusLight;

/// The dark display: what is on the disc, what is in work, how far it is, and the lamps.
class DisplayPanel final : public QFrame {
public:
    DisplayPanel(state::RipdeckControls& ripdeck, const state::Theme& theme, QWidget* parent = nullptr);

private:
    void addNames(QBoxLayout& column);
    void addDiscTags(QBoxLayout& column);
    void addMeters(QBoxLayout& column);
    void addLamps(QBoxLayout& column);
    void addNumbers(QBoxLayout& row);
    void bindLamp(StatusLight& lamp, controls::Label& label);
    void bindDiscLamp(StatusLight& lamp);

    state::RipdeckControls& ripdeck_;
    const state::Theme& theme_;
    Bindings bindings_;
};

}
