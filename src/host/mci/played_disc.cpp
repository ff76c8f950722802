#include "host/mci/played_disc.h"

#include <algorithm>

namespace tonquay::host {

PlayedDisc::PlayedDisc(std::shared_ptr<Disc> disc) : disc_(std::move(disc)), times_(disc_->tracks()) {}

Disc::Read PlayedDisc::read(int firstSector, std::span<std::byte> buffer)
{
    constexpr int mostTries = 20;
    const std::size_t wanted = buffer.size() / sectorBytes;
    std::size_t done = 0;
    while (done < wanted) {
        const int sector = firstSector + static_cast<int>(done);
        if (sector < 0 || sector >= times_.sectors())
            return {done, ReadEnd::endOfDisc};
        const int track = times_.trackAt(sector);
        const auto left = static_cast<std::size_t>(times_.firstSector(track + 1) - sector);
        const std::span part = buffer.subspan(done * sectorBytes, std::min(left, wanted - done) * sectorBytes);
        const Read read = readTrack(static_cast<std::size_t>(track) - 1, sector - times_.firstSector(track), part);
        done += read.sectors;
        if (read.sectors > 0)
            triesInVain_ = 0;
        if (read.end == ReadEnd::full)
            continue;
        if (read.end == ReadEnd::gone || ++triesInVain_ > mostTries)
            return {done, read.end == ReadEnd::gone ? ReadEnd::gone : ReadEnd::unreadable};
        const std::span rest = part.subspan(read.sectors * sectorBytes);
        const std::size_t silent = std::min(stepOver(), rest.size() / sectorBytes);
        std::ranges::fill(rest.first(silent * sectorBytes), std::byte{0});
        lost_ += static_cast<int>(silent);
        done += silent;
    }
    return {done, ReadEnd::full};
}

Disc::Read PlayedDisc::readTrack(std::size_t place, int sectorInTrack, std::span<std::byte> buffer)
{
    const platform::DiscTrack& track = disc_->tracks()[place];
    if (!track.audio) {
        std::ranges::fill(buffer, std::byte{0});
        return {buffer.size() / sectorBytes, ReadEnd::full};
    }
    return disc_->read(track.firstSector + sectorInTrack, buffer);
}

/// 1, 2, 4 sectors and on to a second.
std::size_t PlayedDisc::stepOver() const
{
    constexpr int doublings = 6;
    return std::size_t{1} << std::min(triesInVain_ - 1, doublings);
}

}
