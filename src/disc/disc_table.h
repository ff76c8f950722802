#pragma once

#include "platform/acd_control.h"
#include "platform/event_loop.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::disc {

/// Finds the drive and builds the table of its tracks, at start-up and when another drive is chosen. Each way of
/// reading asks its own source for the lengths.
class DiscTable {
public:
    DiscTable(state::AppState& state, state::Forms& forms, platform::AcdControl& acd, platform::EventLoop& loop)
        : state_(state),
          forms_(forms),
          acd_(acd),
          loop_(loop)
    {}

    /// Start-up with the drive control: looks for driveLetter among its drives (the first one else), and lists the
    /// tracks with their lengths. Leaves driveLetter empty when there is no drive.
    void buildFromControl();

    /// Start-up with the audio engine: takes the hand-over file's drive, which the engine form is loaded for, and lists
    /// the tracks named in that file.
    void buildFromEngine();

    /// The table for analog capture, in place of the one that is there, from the lengths that the capture form reads:
    /// it is shown for that, and waited for. Nothing in the middle of a run.
    void analogtrks();

    /// Switches the drive control to pendingDriveLetter, or to the drive chosen on the setup page when that is empty,
    /// and lists its tracks anew. Does nothing with the audio engine.
    void select_drive();

private:
    state::AppState& state_;
    state::Forms& forms_;
    platform::AcdControl& acd_;
    platform::EventLoop& loop_;
};

/// The name that can be seen on a drive, by its letter, when an audio disc is in.
std::wstring firstTrackName(std::wstring_view driveLetter);

/// Selects every row and scrolls to the first.
void selalltrks(controls::MultiSelectList& list);

}
