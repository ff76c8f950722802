#pragma once

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "state/cdriptab_controls.h"
#include "ui/forms/dialog_window.h"

namespace tonquay::ui {

/// The setup dialog: its pages as tabs, OK and Cancel below. On a small screen a page scrolls.
class SetupWindow {
public:
    SetupWindow(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs);

private:
    class Dialog;

    DialogWindow window_;
};

}
