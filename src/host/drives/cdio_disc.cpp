#include "host/drives/cdio_disc.h"

#include "host/drives/device_node.h"

#include <algorithm>
#include <utility>

namespace tonquay::host {
CdioDisc::CdioDisc(std::string device, std::vector<platform::DiscTrack> tracks, platform::DiscNames names)
    : device_(std::move(device)),
      tracks_(std::move(tracks)),
      names_(std::move(names))
{}

Disc::Read CdioDisc::read(int firstSector, std::span<std::byte> buffer)
{
    if (firstSector < 0)
        return {0, ReadEnd::unreadable};
    if (!drive_)
        drive_ = CdioDrive::open(device_);
    if (!drive_)
        return {0, reasonFor(CdioDrive::Answer::failed)};

    const int leadOut = tracks_.back().firstSector + tracks_.back().sectorCount;
    const std::size_t left = firstSector < leadOut ? static_cast<std::size_t>(leadOut - firstSector) : 0;
    const std::size_t asked = buffer.size() / sectorBytes;
    const std::size_t wanted = std::min(asked, left);

    Read read{0, asked > left ? ReadEnd::endOfDisc : ReadEnd::full};
    while (read.sectors < wanted) {
        const std::size_t run = std::min(sectorsPerRun, wanted - read.sectors);
        const auto at = firstSector + static_cast<int>(read.sectors);
        const ReadEnd end = readRun(at, buffer.subspan(read.sectors * sectorBytes, run * sectorBytes), read.sectors);
        if (end != ReadEnd::full)
            return {read.sectors, end};
    }
    return read;
}

/// A run that fails does not tell where, so it is read again one sector at a time up to the one without data. It also
/// leaves debris, which is why it does not go straight to the target.
Disc::ReadEnd CdioDisc::readRun(int firstSector, std::span<std::byte> target, std::size_t& sectors)
{
    const std::size_t count = target.size() / sectorBytes;
    CdioDrive::Answer answer = drive_->readAudio(firstSector, static_cast<int>(count), run_);
    if (answer == CdioDrive::Answer::good) {
        std::copy_n(run_.begin(), target.size(), target.begin());
        sectors += count;
        return ReadEnd::full;
    }
    if (const ReadEnd reason = reasonFor(answer); reason == ReadEnd::gone || count == 1)
        return reason;
    for (std::size_t index = 0; index < count; ++index) {
        answer = drive_->readAudio(firstSector + static_cast<int>(index), 1, run_);
        if (answer != CdioDrive::Answer::good)
            return reasonFor(answer);
        std::copy_n(run_.begin(), sectorBytes, target.begin() + static_cast<std::ptrdiff_t>(index * sectorBytes));
        ++sectors;
    }
    return ReadEnd::full;
}

Disc::ReadEnd CdioDisc::reasonFor(CdioDrive::Answer answer) const
{
    return answer == CdioDrive::Answer::noMedium || saysNoMedium(device_) ? ReadEnd::gone : ReadEnd::unreadable;
}

}
