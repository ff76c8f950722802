#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string_view>

namespace tonquay::encode {

/// What a run hands its WAV files to. Encoders cannot be driven yet: both steps leave a line and the WAV files as
/// they are.
class EncoderPipeline {
public:
    /// Where a run goes on after a step.
    enum class Next { track, sweep, tag, finish };

    EncoderPipeline(state::AppState& state, state::Forms& forms, platform::Platform& platform)
        : state_(state),
          forms_(forms),
          platform_(platform)
    {}

    /// The encoder step of one track, right after its extraction. `keptWavList` are the quoted names of the WAV files
    /// of the run so far that stay. Answers `track` to go on, `finish` to end the run.
    Next encodeTrack(std::int32_t row, std::wstring_view keptWavList);

    /// The encoders of a whole run, one after the other. Answers `sweep`, `tag` or `finish`.
    Next encodeBatch(std::wstring_view keptWavList);

private:
    state::AppState& state_;
    state::Forms& forms_;
    platform::Platform& platform_;
};

}
