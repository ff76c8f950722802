#include "host/acd/sector_votes.h"

#include "host/audio/checksum.h"
#include "host/discs/disc.h"

#include <algorithm>

namespace tonquay::host {

void SectorVotes::count(int first, std::span<const std::byte> sectors)
{
    for (std::size_t at = 0; at + Disc::sectorBytes <= sectors.size(); at += Disc::sectorBytes, ++first) {
        const std::uint32_t checksum = crc32(0, sectors.subspan(at, Disc::sectorBytes));
        std::vector<Version>& versions = versions_[first];
        const auto known = std::ranges::find(versions, checksum, &Version::checksum);
        if (known == versions.end())
            versions.push_back({checksum, 1});
        else
            ++known->readings;
    }
}

void SectorVotes::forgetBefore(int sector)
{
    versions_.erase(versions_.begin(), versions_.lower_bound(sector));
}

SectorVotes::Verdict SectorVotes::on(int sector, std::span<const std::byte> contents) const
{
    constexpr int enough = 3;
    const auto found = versions_.find(sector);
    if (found == versions_.end())
        return Verdict::open;
    std::vector<Version> versions = found->second;
    std::ranges::sort(versions, std::ranges::greater{}, &Version::readings);
    const bool clear =
        versions.size() == 1 || (versions[0].readings >= enough && versions[0].readings >= 2 * versions[1].readings);
    if (!clear)
        return Verdict::open;
    return versions[0].checksum == crc32(0, contents) ? Verdict::right : Verdict::wrong;
}

}
