#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"
#include "tagging/tag_values.h"

#include <cstdint>

namespace tonquay::tagging {

/// The form id3auto: values for the tags of a disc, and the tagging of its MP3 files. Files are found by their names
/// alone. RunFlags::autoTagMode says what for.
///
/// A file that is found counts as tagged, also when it could not be written: the tag writer leaves a line then.
class AutomaticTagger {
public:
    AutomaticTagger(state::AppState& state, state::Forms& forms, platform::Platform& platform);

private:
    void load();
    void start();
    void closed();
    void leadByEnter();

    void keepForDisc();
    void tagFiles();
    std::int32_t tagTracks(bool selectedOnly);
    void report(std::int32_t tagged);
    TagValues entered() const;

    state::AppState& state_;
    state::RipdeckControls& main_;
    state::Id3autoControls& form_;
    platform::Platform& platform_;
};

}
