#pragma once

#include "state/ripdeck_controls.h"
#include "ui/forms/bindings.h"

#include <QFrame>

namespace tonquay::ui {

/// The column of command keys, each with its caption and what it does.
class CommandColumn final : public QFrame {
public:
    explicit CommandColumn(state::RipdeckControls& ripdeck, QWidget* parent = nullptr);

private:
    Bindings bindings_;
};

/// The keys below it, for the mixer and the popup menu.
class SideKeys final : public QWidget {
public:
    explicit SideKeys(state::RipdeckControls& ripdeck, QWidget* parent = nullptr);

private:
    Bindings bindings_;
};

}
