#include "host/drives/cdio_disc.h"

#include "host/drives/host_drives.h"
#include "simulated_disc.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace tonquay::host {
namespace {

using namespace std::chrono_literals;
using ReadEnd = Disc::ReadEnd;

constexpr std::byte untouched{0xa5};

std::unique_ptr<HostDriveSet> driveOf(const SimulatedDisc& disc, std::chrono::milliseconds interval = 50ms)
{
    return driveSet({.devices = {disc.device()}, .machine = false, .interval = interval, .opener = nullptr});
}

std::vector<std::byte> blank(int sectors)
{
    return std::vector<std::byte>(static_cast<std::size_t>(sectors) * Disc::sectorBytes, untouched);
}

/// What a read of `sectors` from `first` on must leave in a buffer of `asked` sectors.
std::vector<std::byte> expected(const SimulatedDisc& disc, int first, int sectors, int asked)
{
    std::vector<std::byte> bytes = disc.sound(first, sectors);
    bytes.resize(static_cast<std::size_t>(asked) * Disc::sectorBytes, untouched);
    return bytes;
}

TEST(CdioDisc, readsExactlyTheSectorsThatAreThere)
{
    // Data, audio up to its session's end, the gap between the sessions, data of the second one.
    const SimulatedDisc disc("track data 0\ntrack audio 100\ntrack audio 300\ntrack data 12000\n"
                             "last_session 12000\nlead_out 12100\nbad 237 249 274 310\n",
                             12100);
    const auto drives = driveOf(disc);
    const auto opened = drives->at(0).openDisc();
    ASSERT_TRUE(opened);

    struct Case {
        const char* what;
        int first;
        int asked;
        int sectors;
        ReadEnd end;
    };
    const Case cases[] = {
        {"one sector", 100, 1, 1, ReadEnd::full},
        {"a run and a rest", 100, 77, 77, ReadEnd::full},
        {"none", 100, 0, 0, ReadEnd::full},
        {"a bad sector in the middle of a run", 200, 75, 37, ReadEnd::unreadable},
        {"at the bad sector itself", 237, 10, 0, ReadEnd::unreadable},
        {"behind it, up to the next as last of its run", 238, 40, 11, ReadEnd::unreadable},
        {"a bad sector as the last one of a run", 250, 25, 24, ReadEnd::unreadable},
        {"over a track's border", 280, 30, 30, ReadEnd::full},
        {"the data track", 0, 5, 0, ReadEnd::unreadable},
        {"from the end of the audio into the gap", 590, 30, 10, ReadEnd::unreadable},
        {"at the lead-out", 12100, 3, 0, ReadEnd::endOfDisc},
        {"far behind it", 2000000000, 3, 0, ReadEnd::endOfDisc},
        {"before the disc", -1, 3, 0, ReadEnd::unreadable},
    };
    for (const Case& c : cases) {
        std::vector<std::byte> buffer = blank(c.asked);
        const Disc::Read read = opened->read(c.first, buffer);
        EXPECT_EQ(read.sectors, static_cast<std::size_t>(c.sectors)) << c.what;
        EXPECT_EQ(read.end, c.end) << c.what;
        if (c.sectors > 0)
            EXPECT_EQ(buffer, expected(disc, c.first, c.sectors, c.asked)) << c.what;
        else
            EXPECT_EQ(buffer, blank(c.asked)) << c.what;
    }
}

TEST(CdioDisc, readsAWholeDiscBitForBitAndStopsAtTheLeadOut)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc);
    const auto opened = drives->at(0).openDisc();
    ASSERT_TRUE(opened);
    std::vector<std::byte> buffer = blank(1510);
    const Disc::Read read = opened->read(0, buffer);
    EXPECT_EQ(read.sectors, 1500u);
    EXPECT_EQ(read.end, ReadEnd::endOfDisc);
    EXPECT_EQ(buffer, expected(disc, 0, 1500, 1510));
}

TEST(CdioDisc, isGoneWhenItIsTornOutAndStaysGone)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc);
    Drive& drive = drives->at(0);
    const auto opened = drive.openDisc();
    ASSERT_TRUE(opened);
    disc.page("remove_after 3\n");

    std::vector<std::byte> buffer = blank(200);
    const Disc::Read read = opened->read(100, buffer);
    EXPECT_EQ(read.sectors, 75u);
    EXPECT_EQ(read.end, ReadEnd::gone);
    EXPECT_EQ(buffer, expected(disc, 100, 75, 200));
    EXPECT_TRUE(eventually([&] { return drive.tracks().empty(); }));
    EXPECT_EQ(drive.description().problem, platform::DriveProblem::noDisc);
    EXPECT_FALSE(drive.openDisc());

    disc.page("");
    EXPECT_TRUE(eventually([&] { return drive.tracks().size() == 3; }));
    EXPECT_EQ(opened->read(0, buffer).end, ReadEnd::gone) << "a reader of the disc that was taken out";
    const auto again = drive.openDisc();
    ASSERT_TRUE(again);
    EXPECT_EQ(again->read(0, buffer).sectors, 200u);
}

TEST(CdioDisc, isNotGoneWhileTheDriveMerelyStutters)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc, 20ms);
    Drive& drive = drives->at(0);
    const auto opened = drive.openDisc();
    ASSERT_TRUE(opened);
    std::vector<std::byte> buffer = blank(30);

    for (const char* fault : {"ready no\n", "fault busy\n", "fault denied\n"}) {
        disc.page(fault);
        std::this_thread::sleep_for(100ms);
        EXPECT_EQ(drive.tracks().size(), 3u) << fault;
        disc.page("");
        EXPECT_EQ(opened->read(0, buffer).end, ReadEnd::full) << fault;
    }
    disc.page("ready no\n");
    EXPECT_EQ(opened->read(0, buffer).end, ReadEnd::unreadable);
    disc.page("");
    EXPECT_EQ(opened->read(0, buffer).sectors, 30u);
}

TEST(CdioDisc, readersKeepTheirOwnPlaces)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc);
    const auto one = drives->at(0).openDisc();
    const auto two = drives->at(0).openDisc();
    ASSERT_TRUE(one && two);
    const auto readAll = [&disc](Disc& reader, int first, bool& same) {
        std::vector<std::byte> buffer = blank(7);
        same = true;
        for (int sector = first; sector + 7 <= first + 700; sector += 7)
            same = same && reader.read(sector, buffer).sectors == 7 && buffer == disc.sound(sector, 7);
    };
    bool sameOne = false;
    bool sameTwo = false;
    std::thread other([&] { readAll(*two, 700, sameTwo); });
    readAll(*one, 0, sameOne);
    other.join();
    EXPECT_TRUE(sameOne);
    EXPECT_TRUE(sameTwo);
}

}
}
