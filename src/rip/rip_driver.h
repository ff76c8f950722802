#pragma once

#include "encode/encoder_pipeline.h"
#include "platform/platform.h"
#include "rip/program_files.h"
#include "rip/track_extraction.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string>

namespace tonquay::rip {

/// One run: the selected tracks of the list, each to its file in the output folder, then encoders, program file,
/// tags, and the window back to idle.
class RipDriver {
public:
    RipDriver(state::AppState& state, state::Forms& forms, TrackExtraction& extraction,
              encode::EncoderPipeline& encoders, ProgramFiles& programFiles, platform::Platform& platform)
        : state_(state),
          forms_(forms),
          main_(forms.ripdeck()),
          extraction_(extraction),
          encoders_(encoders),
          programFiles_(programFiles),
          platform_(platform)
    {}

    /// From the selected rows of list1 to finished files. Takes as long as the disc and the encoders take; every wait
    /// inside it passes through the event loop, so Stop, the timers and the windows stay alive. Does nothing while a
    /// run is on. The only reports are its two message boxes; success shows in the files.
    void recstart();

private:
    enum class Phase { afterTracks, sweep, tag, finish };
    enum class TrackEnd { next, stop, endRun };

    bool runIsOn() const;
    void prepare();
    void copyBladeToOutput();
    void findLastSelected();
    Phase ripTracks();
    TrackEnd ripTrack(std::int32_t row);
    void cleanTitle(std::int32_t row);
    Phase choosePhase();
    void sweepWavs();
    void tagFiles();
    void finish();
    void pressPower();

    bool encoderNameHas(std::wstring_view word) const;
    bool encoderIsWanted() const;
    bool turboSweeps() const;
    static Phase phaseAfter(encode::EncoderPipeline::Next next);

    state::AppState& state_;
    state::Forms& forms_;
    state::RipdeckControls& main_;
    TrackExtraction& extraction_;
    encode::EncoderPipeline& encoders_;
    ProgramFiles& programFiles_;
    platform::Platform& platform_;
    std::wstring keptWavList_;
};

}
