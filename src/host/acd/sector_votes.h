#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace tonquay::host {

/// Counts for each sector how often which contents were read under its number. A drive that misses the place now and
/// then gives the right contents more often than any wrong ones.
class SectorVotes {
public:
    /// Whole sectors, from `first` on.
    void count(int first, std::span<const std::byte> sectors);

    /// Nothing before this sector is asked for any more.
    void forgetBefore(int sector);

    enum class Verdict { right, wrong, open };

    /// What the readings say to these contents. Readings that all agree are believed from the first on; where they do
    /// not, one version needs twice as many as any other, and three at least.
    [[nodiscard]] Verdict on(int sector, std::span<const std::byte> contents) const;

private:
    struct Version {
        std::uint32_t checksum;
        int readings;
    };

    std::map<int, std::vector<Version>> versions_;
};

}
