#pragma once

#include "disc/disc_table.h"
#include "platform/platform.h"
#include "setup/setup_state.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::setup {

/// The drives of the setup dialog: those of whichever way of reading is live, and the one that is chosen.
class DriveList {
public:
    DriveList(state::AppState& state, state::Forms& forms, disc::DiscTable& discTable, platform::Platform& platform);

    /// Lists the drives. The audio engine's are those of its own form, which moves to the selected one; a drive control
    /// without any gets a box that says what may be missing.
    void fill();

private:
    void listEngineDrives();
    void listControlDrives();
    std::int32_t rowOfSelected() const;
    void choose();
    void chooseEngineDrive(std::int32_t row);

    state::AppState& state_;
    state::Forms& forms_;
    state::CdriptabControls& form_;
    disc::DiscTable& discTable_;
    platform::Platform& platform_;
};

}
