#include "host/drives/watched_disc.h"

#include <utility>

namespace tonquay::host {

WatchedDisc::WatchedDisc(std::unique_ptr<Disc> disc, std::shared_ptr<Medium> medium)
    : disc_(std::move(disc)),
      medium_(std::move(medium))
{
    medium_->addReader();
}

WatchedDisc::~WatchedDisc()
{
    medium_->removeReader();
}

Disc::Read WatchedDisc::read(int firstSector, std::span<std::byte> buffer)
{
    if (!medium_->isIn())
        return {0, ReadEnd::gone};
    Read read = disc_->read(firstSector, buffer);
    // A disc that leaves in the middle of a read fails first and is missed a moment later.
    if (read.end == ReadEnd::unreadable && !medium_->isIn())
        read.end = ReadEnd::gone;
    return read;
}

}
