#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::rip {

/// The list of a run's files for the suite's player: a sequential text file (`.pg1`) in the data folder, named by
/// artist and album, a record for each selected track with its title, folder and file name.
class ProgramFiles {
public:
    ProgramFiles(state::AppState& state, state::Forms& forms, platform::Platform& platform)
        : state_(state),
          main_(forms.ripdeck()),
          platform_(platform)
    {}

    /// Writes the program file of the selected tracks and replaces an older one; the output folder is made if it is
    /// missing. It names the files that a run makes, also those that are yet to be encoded: "MP3" files whenever an
    /// encoder is wanted, else WAV files. A failure leaves a line only. With `showMessage` 1 a message box says where
    /// it is.
    void savepgm(std::int16_t showMessage);

private:
    std::string records(std::wstring_view outputFolder) const;

    state::AppState& state_;
    state::RipdeckControls& main_;
    platform::Platform& platform_;
    std::wstring programFileName_;
};

}
