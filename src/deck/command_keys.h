#pragma once

#include "deck/program_end.h"
#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::deck {

/// The column of command keys. Each key's caption carries the same command as the key itself.
class CommandKeys {
public:
    CommandKeys(state::AppState& state, state::Forms& forms, ProgramEnd& programEnd, platform::Platform& platform);

    void press(state::CommandKey key);

    /// Shows the setup dialog on one of its tabs, from 1, and disables the main window meanwhile.
    void openSetup(std::int32_t tab);

private:
    void goToPlayer();
    void openPartialRip();
    void openDiscTags();

    state::AppState& state_;
    state::Forms& forms_;
    state::RipdeckControls& main_;
    ProgramEnd& programEnd_;
    platform::Platform& platform_;
};

}
