#include "host/discs/disc.h"

#include <discid/discid.h>

#include <array>
#include <memory>

namespace tonquay::host {

namespace {

struct FreeDiscId {
    void operator()(DiscId* handle) const { discid_free(handle); }
};

}

/// Data tracks behind the last audio track are left out, as for a disc with a second session in a drive; a data track
/// before the music counts. So the lead-out of the table is the end of the last audio track.
std::string discId(const std::vector<platform::DiscTrack>& tracks)
{
    constexpr int leadIn = 150;
    constexpr int maxTrack = 99;
    std::size_t count = tracks.size();
    while (count > 0 && !tracks[count - 1].audio)
        --count;
    if (count == 0)
        count = tracks.size();
    if (count == 0 || count > maxTrack)
        return {};

    std::array<int, maxTrack + 1> offsets{};
    const platform::DiscTrack& last = tracks[count - 1];
    offsets[0] = last.firstSector + last.sectorCount + leadIn;
    for (std::size_t i = 0; i < count; ++i) {
        const int number = tracks[i].number;
        if (number < 1 || number > maxTrack || (i > 0 && number != tracks[i - 1].number + 1))
            return {};
        offsets[static_cast<std::size_t>(number)] = tracks[i].firstSector + leadIn;
    }
    const std::unique_ptr<DiscId, FreeDiscId> handle(discid_new());
    if (!handle || discid_put(handle.get(), tracks.front().number, last.number, offsets.data()) == 0)
        return {};
    const char* const id = discid_get_id(handle.get());
    return id != nullptr ? id : std::string();
}

}
