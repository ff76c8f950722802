#pragma once

#include "host/discs/disc.h"
#include "host/mci/disc_times.h"

#include <atomic>
#include <memory>

namespace tonquay::host {

/// A disc as a player for listening gives it: its tracks one after the other from sector 0 on, whatever lies between
/// them. Data tracks are silent, and so is what gives no data; behind a bad place it goes on, in longer and longer
/// steps, until a number of tries in a row were in vain. Only a disc that is gone ends it at once.
class PlayedDisc final : public Disc {
public:
    explicit PlayedDisc(std::shared_ptr<Disc> disc);

    const std::vector<platform::DiscTrack>& tracks() const override { return disc_->tracks(); }
    const platform::DiscNames& names() const override { return disc_->names(); }
    Read read(int firstSector, std::span<std::byte> buffer) override;

    /// Sectors of sound that are silent because they gave no data. From any thread.
    int sectorsLost() const { return lost_; }

private:
    /// A stretch within one track. The result is smaller than the buffer only at a bad place.
    Read readTrack(std::size_t place, int sectorInTrack, std::span<std::byte> buffer);
    std::size_t stepOver() const;

    std::shared_ptr<Disc> disc_;
    DiscTimes times_;
    int triesInVain_ = 0;
    std::atomic<int> lost_ = 0;
};

}
