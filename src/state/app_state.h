#pragma once

#include "state/disc_info.h"
#include "state/run_flags.h"
#include "state/settings.h"
#include "tags/tag_state.h"
#include "tags/wav_info.h"

#include <array>
#include <string>

namespace tonquay::state {

/// Everything that lives as long as the program. Each behaviour gets the slices that it touches, not the whole.
struct AppState {
    Folders folders;
    RipSettings settings;
    RipPath path;
    Theme theme;
    DiscInfo disc;
    PartialTracks partial;
    RunFlags flags;
    RunInHand run;
    EngineState engine;
    WindowState window;
    tags::TagState tags;
    tags::WavInfo wav;                        ///< of the WAV file that the tag page showed last
    std::wstring TagFilePath;                 ///< the file that the tag page shows
    std::array<std::wstring, 7> TagClipboard; ///< title, artist, album, comment, year, genre, track
    TrackTable<std::int32_t> analogTrackSeconds;
};

}
