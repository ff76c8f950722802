#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::deck {

/// What the main window does with the outside: the mixer, the help, its own place on the screen, and the ways to its
/// popup menu.
class Shell {
public:
    /// Takes over the mixer's and the menu's controls, the background, and the keys Esc (the Power control) and F1.
    Shell(state::AppState& state, state::Forms& forms, platform::Platform& platform);

    /// Shows the help for the main window.
    void helpOpen();

    /// Puts the main window in the middle of the screen.
    void centre();

    void openMenu();

private:
    void backgroundPressed(controls::MouseButton button);
    void keyPressed(controls::Key key);
    void startMixer();

    state::AppState& state_;
    state::Forms& forms_;
    state::RipdeckControls& main_;
    platform::Platform& platform_;
};

}
