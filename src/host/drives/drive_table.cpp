#include "host/drives/drive_table.h"

#include "base/red_book.h"

#include <algorithm>

namespace tonquay::host {
namespace {

constexpr int lastTrackNumber = 99;

// A hundred minutes is more than any disc holds; no sum of sectors can overflow below it.
constexpr int lastSector = base::red_book::sectorAt(100, 0, 0);

bool makesSense(const RawTable& table)
{
    if (table.entries.empty() || table.leadOut > lastSector)
        return false;
    int number = 0;
    int sector = -1;
    for (const RawTable::Entry& entry : table.entries) {
        if (entry.number <= number || entry.number > lastTrackNumber || entry.firstSector <= sector)
            return false;
        number = entry.number;
        sector = entry.firstSector;
    }
    return table.leadOut > sector;
}

}

std::optional<std::vector<platform::DiscTrack>> tracksOf(const RawTable& table)
{
    if (!makesSense(table))
        return std::nullopt;
    std::vector<platform::DiscTrack> tracks;
    for (std::size_t index = 0; index < table.entries.size(); ++index) {
        const RawTable::Entry& entry = table.entries[index];
        const bool last = index + 1 == table.entries.size();
        const int next = last ? table.leadOut : table.entries[index + 1].firstSector;
        const bool sessionEnds = !last && table.lastSession > 0 && next == table.lastSession;
        const int end = sessionEnds ? next - sessionGap : next;
        tracks.push_back({entry.number, entry.firstSector, std::max(0, end - entry.firstSector), entry.audio});
    }
    return tracks;
}

bool hasAudio(const std::vector<platform::DiscTrack>& tracks)
{
    return std::any_of(tracks.begin(), tracks.end(), [](const platform::DiscTrack& track) { return track.audio; });
}

}
