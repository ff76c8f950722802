#include "host/acd/straight_reader.h"

#include <algorithm>

namespace tonquay::host {

std::size_t StraightReader::read(std::span<std::byte> buffer)
{
    const std::size_t wanted =
        std::min(buffer.size() / Disc::sectorBytes, static_cast<std::size_t>(task_.wanted.end() - next_));
    std::size_t done = 0;
    while (done < wanted && !gone_ && !task_.stop) {
        const auto rest = buffer.subspan(done * Disc::sectorBytes, (wanted - done) * Disc::sectorBytes);
        std::size_t got = readRun(rest);
        if (got == 0 && !gone_ && !task_.stop) {
            got = readRun(rest.first(Disc::sectorBytes));
            if (got == 0 && !gone_) {
                std::ranges::fill(rest.first(Disc::sectorBytes), std::byte{0});
                task_.journal.wasGivenUp(next_);
                ++next_;
                got = 1;
            }
        }
        done += got;
    }
    return done;
}

/// As many sectors as give data at once.
std::size_t StraightReader::readRun(std::span<std::byte> buffer)
{
    const Disc::Read read = task_.disc.read(next_, buffer);
    task_.journal.wasRead(next_, static_cast<int>(read.sectors));
    next_ += static_cast<int>(read.sectors);
    if (read.end == Disc::ReadEnd::gone)
        gone_ = true;
    else if (read.sectors * Disc::sectorBytes < buffer.size())
        task_.journal.gaveNoData(next_);
    return read.sectors;
}

}
