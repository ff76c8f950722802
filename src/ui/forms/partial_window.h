#pragma once

#include "state/trkcust_controls.h"
#include "ui/forms/dialog_window.h"

namespace tonquay::ui {

/// The dialog in which parts of tracks are chosen.
class PartialWindow {
public:
    explicit PartialWindow(state::TrkcustControls& form);

private:
    class Dialog;

    DialogWindow window_;
};

}
