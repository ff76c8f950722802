#pragma once

#include "state/cdrip1_controls.h"
#include "ui/forms/dialog_window.h"

namespace tonquay::ui {

/// The audio engine's own form on the screen, for whoever works on it; people never see it. Closing it only takes it
/// off the screen: the form works on, and comes back with the next start.
class EngineWindow {
public:
    explicit EngineWindow(state::Cdrip1Controls& form);

private:
    class Dialog;

    DialogWindow window_;
};

}
