#pragma once

#include "engine/engine_form.h"
#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <cstdint>
#include <string>

namespace tonquay::rip {

/// Gets one track off the disc by the way of reading that is live: the audio engine, the drive control, or analog
/// capture. Returns when the track is done or has failed; every wait passes through the event loop.
class TrackExtraction {
public:
    TrackExtraction(state::AppState& state, state::Forms& forms, engine::EngineForm& engine,
                    platform::Platform& platform)
        : state_(state),
          forms_(forms),
          engine_(engine),
          platform_(platform)
    {}

    /// Row `row` of the track list into `wavPath`.
    void extract(std::int32_t row, const std::wstring& wavPath);

private:
    void captureAnalog(std::int32_t row, const std::wstring& wavPath);
    void extractByControl(std::int32_t row, const std::wstring& wavPath);
    void extractByEngine(std::int32_t row, const std::wstring& wavPath);
    void handOverCounters();

    state::AppState& state_;
    state::Forms& forms_;
    engine::EngineForm& engine_;
    platform::Platform& platform_;
};

}
