#pragma once

#include "state/cdrip1_controls.h"
#include "ui/forms/bindings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>

#include <array>

namespace tonquay::ui {

/// The bitrate and the tags of WMA files; there as long as they are what is extracted.
class WmaOptionsBox final : public QGroupBox {
public:
    explicit WmaOptionsBox(state::Cdrip1Controls& form);

private:
    QComboBox rates_;
    QCheckBox tagged_;
    std::array<QLineEdit, 8> tags_;
    Bindings bindings_;
    bool writing_ = false;
};

}
