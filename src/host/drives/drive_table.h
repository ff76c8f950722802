#pragma once

#include "platform/discs.h"

#include <optional>
#include <vector>

namespace tonquay::host {

/// The table of contents as a drive tells it.
struct RawTable {
    struct Entry {
        int number = 0;
        int firstSector = 0;
        bool audio = true;
    };

    std::vector<Entry> entries;
    int leadOut = 0;
    int lastSession = 0; ///< first sector of the last session's first track; 0 for a disc of one session
};

/// Sectors between the last one of a first session and the next session's first track, by the orange book: lead-out
/// 6750, lead-in 4500, pregap 150.
constexpr int sessionGap = 11400;

/// The tracks with their lengths. A track before a later session ends where its own session does, not where the next
/// track begins. None when the table makes no sense: no track, more than 99, numbers or sectors that do not rise.
std::optional<std::vector<platform::DiscTrack>> tracksOf(const RawTable& table);

/// True with at least one audio track.
bool hasAudio(const std::vector<platform::DiscTrack>& tracks);

}
