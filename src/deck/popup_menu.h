#pragma once

#include "deck/command_keys.h"
#include "deck/program_end.h"
#include "deck/shell.h"
#include "rip/program_files.h"
#include "rip/rip_driver.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::deck {

/// The popup menu. Nearly every entry presses and releases the control that has the same command, so that both ways are
/// one; the rest of the commands have no control of their own.
class PopupMenu {
public:
    struct Commands {
        CommandKeys& keys;
        ProgramEnd& programEnd;
        Shell& shell;
        rip::RipDriver& driver;
        rip::ProgramFiles& programFiles;
    };

    PopupMenu(state::AppState& state, state::Forms& forms, Commands commands);

private:
    void wireKeys();
    void wireOwnCommands();
    void encodeSelected();

    state::AppState& state_;
    state::RipdeckControls& main_;
    state::PopaControls& popa_;
    Commands commands_;
};

}
