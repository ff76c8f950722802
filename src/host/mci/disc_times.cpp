#include "host/mci/disc_times.h"

#include <algorithm>

namespace tonquay::host {

DiscTimes::DiscTimes(const std::vector<platform::DiscTrack>& tracks) : starts_{0}
{
    for (const platform::DiscTrack& track : tracks)
        starts_.push_back(starts_.back() + std::max(track.sectorCount, 0));
}

std::int64_t DiscTimes::lengthMs(int track) const
{
    return msAt(firstSector(track + 1)) - msAt(firstSector(track));
}

int DiscTimes::trackAt(int sector) const
{
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), sector);
    return std::clamp(static_cast<int>(next - starts_.begin()), 1, std::max(trackCount(), 1));
}

}
