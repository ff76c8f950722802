#pragma once

#include "platform/file_system.h"
#include "state/cdrecalt_controls.h"
#include "ui/forms/dialog_window.h"

namespace tonquay::ui {

/// The window of analog capture. It lets the main window have the keyboard, stays there from one track of a run to the
/// next, and is not seen when the form is opened for the lengths of the tracks alone.
class CaptureWindow {
public:
    CaptureWindow(state::CdrecaltControls& form, platform::FileSystem& files);

private:
    class Dialog;

    DialogWindow window_;
};

}
