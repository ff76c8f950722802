#include "host/mci/played_disc.h"

#include "support/disc_maker.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace tonquay::host::test {
namespace {

using Bytes = std::vector<std::byte>;

/// Each sector holds the pattern of its number, some give no data, and from one on the disc is gone.
struct PatternDisc : Disc {
    std::vector<platform::DiscTrack> table;
    platform::DiscNames none;
    std::set<int> bad;
    int badFrom = 1 << 30;
    int goneFrom = 1 << 30;
    int reads = 0;

    const std::vector<platform::DiscTrack>& tracks() const override { return table; }
    const platform::DiscNames& names() const override { return none; }
    Read read(int firstSector, std::span<std::byte> buffer) override
    {
        ++reads;
        const std::size_t wanted = buffer.size() / sectorBytes;
        for (std::size_t i = 0; i < wanted; ++i) {
            const int sector = firstSector + static_cast<int>(i);
            if (sector >= goneFrom)
                return {i, ReadEnd::gone};
            if (sector >= badFrom || bad.contains(sector))
                return {i, ReadEnd::unreadable};
            const Bytes bytes = tonquay::test::patternSector(sector);
            std::ranges::copy(bytes, buffer.begin() + static_cast<std::ptrdiff_t>(i * sectorBytes));
        }
        return {wanted, ReadEnd::full};
    }
};

/// Numbers of the sectors that a stretch holds; -1 for a silent one.
std::vector<int> sectorsOf(const Bytes& sound, const std::vector<int>& possible)
{
    std::vector<int> found;
    for (auto at = sound.begin(); at != sound.end(); at += Disc::sectorBytes) {
        const Bytes sector(at, at + Disc::sectorBytes);
        const auto number =
            std::ranges::find_if(possible, [&](int n) { return sector == tonquay::test::patternSector(n); });
        found.push_back(number != possible.end() ? *number : -2);
    }
    return found;
}

TEST(PlayedDisc, tracksFollowEachOtherAndWhatIsNoSoundIsSilent)
{
    const auto disc = std::make_shared<PatternDisc>();
    disc->table = {{1, 32, 4, true}, {2, 36, 3, false}, {3, 11439, 3, true}};
    PlayedDisc played(disc);
    Bytes sound(10 * Disc::sectorBytes, std::byte{7});
    const Disc::Read read = played.read(0, sound);
    EXPECT_EQ(read.sectors, 10U);
    EXPECT_EQ(read.end, Disc::ReadEnd::full);
    const std::vector<int> wanted{32, 33, 34, 35, -1, -1, -1, 11439, 11440, 11441};
    EXPECT_EQ(sectorsOf(sound, wanted), wanted);
    EXPECT_EQ(played.sectorsLost(), 0);
    const Disc::Read behind = played.read(8, sound);
    EXPECT_EQ(behind.sectors, 2U);
    EXPECT_EQ(behind.end, Disc::ReadEnd::endOfDisc);
}

TEST(PlayedDisc, badPlacesAreSteppedOverUntilNothingComesAnyMore)
{
    const auto disc = std::make_shared<PatternDisc>();
    disc->table = {{1, 0, 20, true}, {2, 20, 100000, true}};
    disc->bad = {3, 7, 8, 9};
    PlayedDisc played(disc);
    Bytes sound(20 * Disc::sectorBytes, std::byte{7});
    EXPECT_EQ(played.read(0, sound).sectors, 20U);
    // The second step after 7 takes two sectors.
    const std::vector<int> wanted{0, 1, 2, -1, 4, 5, 6, -1, -1, -1, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};
    EXPECT_EQ(sectorsOf(sound, wanted), wanted);
    EXPECT_EQ(played.sectorsLost(), 4);

    disc->badFrom = 30;
    disc->reads = 0;
    Bytes much(5000 * Disc::sectorBytes);
    const Disc::Read read = played.read(20, much);
    EXPECT_EQ(read.end, Disc::ReadEnd::unreadable);
    EXPECT_LT(read.sectors, 2000U) << "a drive takes seconds for each try";
    EXPECT_LT(disc->reads, 30);

    disc->goneFrom = 40;
    disc->badFrom = 1 << 30;
    const Disc::Read gone = played.read(35, sound);
    EXPECT_EQ(gone.sectors, 5U);
    EXPECT_EQ(gone.end, Disc::ReadEnd::gone);
}

}
}
