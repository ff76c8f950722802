#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::rip {

/// The form trkcust: cuts the start and the end of tracks. It edits the tables of wanted parts and nothing else; a run
/// with the drive control reads them. A cut counts only for a track that is selected for the run besides.
///
/// Every opening puts the ends back to the ends of the tracks and keeps the starts. Whether a track is a partial one is
/// decided by OK alone.
class PartialSelection {
public:
    PartialSelection(state::AppState& state, state::Forms& forms, platform::Platform& platform);

private:
    void load();
    void fillList();
    void pickRow();
    void takeOverPending();
    void enterStart();
    void enterEnd();
    void enterTrack();
    void ok();
    void close();
    void showTimes(std::int32_t number);
    std::int32_t trackInWork() const;

    state::AppState& state_;
    state::TrkcustControls& form_;
    state::RipdeckControls& main_;
    platform::Platform& platform_;
    bool editingStart = false;
    bool editingEnd = false;
};

/// "3:07": minutes as they come, seconds in two digits. Parts of a second are left out.
std::wstring partialTimeText(double milliseconds);

/// Seconds of a time as it is typed into the dialog: "3:07", "12:05", or "45" for seconds alone. The colon counts as
/// the second or third character only and the seconds are the last two characters; each number over 59 is 59, and what
/// is no number counts as 0.
std::int32_t partialSeconds(std::wstring_view typed);

}
