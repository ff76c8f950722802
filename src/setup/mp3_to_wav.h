#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/cdriptab_controls.h"
#include "state/mp3_row.h"

#include <string>

namespace tonquay::setup {

/// Decodes a queue of MP3 files to WAV files beside them, with LAME as the decoder. The files pass through two fixed
/// names in a private folder, so that no blank or letter of theirs stands in a command.
class Mp3ToWav {
public:
    Mp3ToWav(state::AppState& state, state::CdriptabControls& form, platform::Platform& platform);

    /// What the page shows when the dialog loads: the folder of the settings, and where the decoder is.
    void load();

private:
    void wireQueue();
    void listFiles();
    void addSelected();
    void addAll();
    void endAdding();
    void removeSelected();
    void queueClicked();
    void showDecoder();
    std::wstring decoder() const;
    void convert();
    void convertRow(const std::wstring& decoder, const state::Mp3Row& row);

    state::AppState& state_;
    state::CdriptabControls& form_;
    platform::Platform& platform_;
    bool busy_ = false; ///< a queue is being converted
};

}
