#pragma once

#include "platform/audio_engine.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/wma_encoder.h"
#include "state/app_state.h"
#include "state/cdrip1_controls.h"
#include "state/ripdeck_controls.h"

#include <string>
#include <vector>

namespace tonquay::engine {

/// What the parts of the engine form share: its controls, the main window that it writes its displays to, the stream
/// of the process, and the world behind it.
struct EngineContext {
    state::AppState& state;
    state::Cdrip1Controls& form;
    state::RipdeckControls& ripdeck;
    platform::AudioEngine& engine;
    platform::WmaEncoder& wma;
    platform::EventLoop& loop;
    platform::Dialogs& dialogs;
    platform::FileSystem& files;
    platform::Diagnostics& log;

    std::uint32_t engineDrive = 0;                    ///< the engine's number of the drive in use
    std::int32_t lastDriveIndex = -1;                 ///< highest drive number found
    int quietTicks = 0;                               ///< of the position timer, since something moved or was pressed
    std::vector<std::wstring> wmaTagKeys{};           ///< of a WMA file, by txtWMATags
    platform::AudioEngine::Handle streamLeftOpen = 0; ///< by an extraction that could not begin
    bool extracting = false;                          ///< the stream is being read into a file and is nobody else's

    /// Something is about to move that the position timer shows: it ticks at its full rate again.
    void stir()
    {
        quietTicks = 0;
        form.tmrPlaybackPosition.setInterval(state::Cdrip1Controls::positionInterval);
    }

    platform::AudioEngine::Handle stream() const { return state.engine.audioStream; }
};

/// A play time as the engine form shows it; the seconds are whole.
std::wstring Seconds2HMS(std::int32_t seconds);

}
