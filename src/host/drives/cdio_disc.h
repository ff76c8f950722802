#pragma once

#include "host/discs/disc.h"
#include "host/drives/cdio_drive.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace tonquay::host {

/// The audio disc in a drive. The table and the names are those that the drive's watch has read; the drive itself is
/// opened by the first read, on the reader's thread, so that making one of these does not wait for a slow drive.
class CdioDisc : public Disc {
public:
    CdioDisc(std::string device, std::vector<platform::DiscTrack> tracks, platform::DiscNames names);

    const std::vector<platform::DiscTrack>& tracks() const override { return tracks_; }
    const platform::DiscNames& names() const override { return names_; }
    Read read(int firstSector, std::span<std::byte> buffer) override;

private:
    // What every kernel takes in one request.
    static constexpr std::size_t sectorsPerRun = 25;

    ReadEnd readRun(int firstSector, std::span<std::byte> target, std::size_t& sectors);
    ReadEnd reasonFor(CdioDrive::Answer answer) const;

    std::string device_;
    std::vector<platform::DiscTrack> tracks_;
    platform::DiscNames names_;
    std::optional<CdioDrive> drive_;
    std::array<std::byte, sectorsPerRun * sectorBytes> run_{};
};

}
