#include "console/track_part.h"

#include "base/red_book.h"
#include "console/play_time.h"

#include <algorithm>

namespace tonquay::console {

namespace {

constexpr std::int64_t msPerSecond = 1000;
constexpr std::int64_t bytesPerSecond = base::red_book::bytesPerSecond;

base::Failure wrong(const char* option, std::string text)
{
    return {base::Failure::Kind::invalid, option, std::move(text)};
}

}

base::Result<std::optional<TrackPart>> partOf(const RipOptions& options, const std::vector<std::size_t>& rows,
                                              const std::vector<platform::DiscTrack>& tracks)
{
    if (!options.fromSeconds && !options.toSeconds)
        return std::optional<TrackPart>();
    const char* given = options.fromSeconds ? "--from" : "--to";
    if (options.method == Method::digital2 || options.method == Method::analog)
        return wrong(given, "only --method normal, synchronous and burst read a part of a track");
    if (rows.size() != 1)
        return wrong(given, "a part is of one track; name it with --tracks");
    const std::int64_t trackBytes = tracks[rows.front()].sectorCount * base::red_book::bytesPerSector;
    const std::int64_t from = options.fromSeconds.value_or(0);
    if (from * bytesPerSecond >= trackBytes)
        return wrong("--from", "the track ends before this");
    const std::int64_t trackEnd = trackBytes / bytesPerSecond + 1;
    const std::int64_t to = std::min<std::int64_t>(options.toSeconds.value_or(static_cast<int>(trackEnd)), trackEnd);
    if (to <= from)
        return wrong("--to", "the end is not behind the start");
    TrackPart part;
    part.startMs = static_cast<std::int32_t>(from * msPerSecond);
    part.lengthMs = static_cast<std::int32_t>((to - from) * msPerSecond);
    part.bytes = std::min(to * bytesPerSecond, trackBytes) - from * bytesPerSecond;
    return std::optional(part);
}

void want(const TrackPart& part, std::int32_t row, state::PartialTracks& partial)
{
    const std::int32_t number = row + 1;
    partial.partialStartMs.set(number, part.startMs);
    partial.partialEndMs.set(number, part.startMs + part.lengthMs);
    partial.partialLengthMs.set(number, part.lengthMs);
}

}
