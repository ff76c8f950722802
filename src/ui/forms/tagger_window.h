#pragma once

#include "state/id3auto_controls.h"
#include "ui/forms/dialog_window.h"

namespace tonquay::ui {

/// The window of the automatic tagger. It is made when it is first shown; one that does its work while it loads is
/// never seen.
class TaggerWindow {
public:
    explicit TaggerWindow(state::Id3autoControls& form);

private:
    class Dialog;

    DialogWindow window_;
};

}
