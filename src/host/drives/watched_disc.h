#pragma once

#include "host/discs/disc.h"
#include "host/drives/medium.h"

#include <memory>

namespace tonquay::host {

/// A disc that is gone as soon as its drive's watch, or an opened door, says so, whatever its file would still give.
class WatchedDisc : public Disc {
public:
    WatchedDisc(std::unique_ptr<Disc> disc, std::shared_ptr<Medium> medium);
    ~WatchedDisc() override;
    WatchedDisc(const WatchedDisc&) = delete;
    WatchedDisc& operator=(const WatchedDisc&) = delete;

    const std::vector<platform::DiscTrack>& tracks() const override { return disc_->tracks(); }
    const platform::DiscNames& names() const override { return disc_->names(); }
    Read read(int firstSector, std::span<std::byte> buffer) override;

private:
    std::unique_ptr<Disc> disc_;
    std::shared_ptr<Medium> medium_;
};

}
