#pragma once

#include "platform/platform.h"
#include "platform/processes.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tonquay::encode {

/// An encoder that was started for one track.
struct StartedEncoder {
    std::int32_t row = 0; ///< of list1
    platform::Processes::Child child = 0;
    std::wstring encodedPath; ///< the file that it makes, as far as is known; empty for one with its own window
};

/// Starts the outside encoders of a run and takes the WAV files away that they are done with.
///
/// Three schedules: all tracks after the whole disc is read (encodeBatch), each track right after it is read
/// (encodeTrack), and Turbo, where encodeTrack starts the encoder in the background and the next track is read at once.
/// A wait passes through the event loop and takes no processor. No encoder is ever ended from here, and its exit code
/// decides nothing: an encoder that cannot be started counts as one that ended. What is passed over leaves a line.
class EncoderPipeline {
public:
    /// Where a run goes on after a step.
    enum class Next { track, sweep, tag, finish };

    /// `started`, if given, is told of each encoder of a single track, right after its start.
    EncoderPipeline(state::AppState& state, state::Forms& forms, platform::Platform& platform,
                    std::function<void(const StartedEncoder&)> started = {});

    /// The encoder of one track, right after its extraction; RunInHand::currentName is its name. Returns when the
    /// encoder has ended, under Turbo at once for every track but the last selected one. Answers `track` to go on, or
    /// `finish` to end the run.
    Next encodeTrack(std::int32_t row);

    /// The encoders of the whole run, one after the other, for the rows that are still selected when their turn comes.
    /// `keptWavList` are the quoted names, each led by a blank, of the WAV files that stay. Answers `sweep`, `tag` or
    /// `finish`.
    Next encodeBatch(std::wstring_view keptWavList);

private:
    bool enterOutputFolder();
    void showEncoding();
    void encodeSelectedRows();
    void encodeWholeFolder(std::wstring_view keptWavList, bool entered);
    void tell(const state::RipSettings& settings, std::int32_t row, platform::Processes::Child child);

    state::AppState& state_;
    state::RipdeckControls& main_;
    platform::Platform& platform_;
    std::function<void(const StartedEncoder&)> started_;
};

}
