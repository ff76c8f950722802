#pragma once

#include "base/result.h"
#include "console/options.h"
#include "platform/discs.h"
#include "state/disc_info.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tonquay::console {

/// The part of one track that is wanted, as the drive control is asked for it.
struct TrackPart {
    std::int32_t startMs = 0;
    std::int32_t lengthMs = 0; ///< may reach beyond the track's end, where the track ends then
    std::int64_t bytes = 0;    ///< of sound in it
};

/// The part that --from and --to name; nothing without them. `rows` are the wanted tracks, places in the table.
///
/// Fails when they name no part of exactly one track: no method that cuts, several tracks, an end that is not behind
/// the start, a start behind the track's end.
base::Result<std::optional<TrackPart>> partOf(const RipOptions& options, const std::vector<std::size_t>& rows,
                                              const std::vector<platform::DiscTrack>& tracks);

/// Notes the part for the track in `row` of the program's list.
void want(const TrackPart& part, std::int32_t row, state::PartialTracks& partial);

}
