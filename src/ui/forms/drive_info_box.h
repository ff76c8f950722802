#pragma once

#include "state/cdrip1_controls.h"
#include "ui/forms/bindings.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>

#include <array>

namespace tonquay::ui {

/// What the drive in use can do and in what state its door is; nothing here is for the user to change.
class DriveInfoBox final : public QGroupBox {
public:
    explicit DriveInfoBox(state::Cdrip1Controls& form);

private:
    QLabel speed_;
    QLabel cache_;
    std::array<QCheckBox, 15> flags_;
    Bindings bindings_;
};

}
