#pragma once

#include "platform/discs.h"

#include <cstdint>
#include <vector>

namespace tonquay::host {

/// The tracks of a disc one after the other, as they are played: places in sectors and in milliseconds.
///
/// A track begins at the millisecond that its first sector lies in, and its length goes to where the next one begins.
/// So lengths add up to places without an error that grows, and each of those leads back to the sector.
class DiscTimes {
public:
    explicit DiscTimes(const std::vector<platform::DiscTrack>& tracks);

    int trackCount() const { return static_cast<int>(starts_.size()) - 1; }
    int sectors() const { return starts_.back(); }

    int firstSector(int track) const { return starts_[static_cast<std::size_t>(track) - 1]; } ///< 1 to trackCount() + 1
    std::int64_t lengthMs(int track) const;
    std::int64_t endMs() const { return msAt(sectors()); }

    /// The track that a sector is of; behind the end the last one. From 1.
    int trackAt(int sector) const;

    static std::int64_t msAt(std::int64_t sector) { return sector * 40 / 3; }
    /// The first sector that begins at `ms` or later.
    static std::int64_t sectorAt(std::int64_t ms) { return (ms * 3 + 39) / 40; }

private:
    std::vector<int> starts_; ///< of each track, then of what would come behind them
};

}
