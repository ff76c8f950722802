#include "host/drives/real_drive.h"

#include "host/drives/drive_abilities.h"
#include "host/drives/host_discs.h"
#include "host/drives/host_drives.h"
#include "simulated_disc.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <gtest/gtest.h>

namespace tonquay::host {
namespace {

using namespace std::chrono_literals;
using platform::DriveProblem;

std::unique_ptr<HostDriveSet> driveOf(const SimulatedDisc& disc, std::chrono::milliseconds interval = 50ms,
                                      std::chrono::milliseconds patience = 5000ms)
{
    return driveSet(
        {.devices = {disc.device()}, .machine = false, .interval = interval, .patience = patience, .opener = nullptr});
}

std::string nameTracks(const std::vector<platform::DiscTrack>&)
{
    return "id";
}

TEST(RealDrive, tellsTheTableOfEachKindOfDisc)
{
    struct Case {
        const char* what;
        const char* table;
        std::vector<int> lengths;
        DriveProblem problem;
    };
    const Case cases[] = {
        {"audio", "track audio 0\ntrack audio 500\nlead_out 900\n", {500, 400}, DriveProblem::none},
        {"data first", "track data 0\ntrack audio 500\nlead_out 900\n", {500, 400}, DriveProblem::none},
        {"numbers from 5",
         "first_number 5\ntrack audio 0\ntrack audio 500\nlead_out 900\n",
         {500, 400},
         DriveProblem::none},
        {"a data session",
         "track audio 0\ntrack data 12000\nlast_session 12000\nlead_out 12900\n",
         {600, 900},
         DriveProblem::none},
        {"data only", "track data 0\nlead_out 900\n", {}, DriveProblem::dataDisc},
        {"a broken table", "track audio 500\ntrack audio 400\nlead_out 900\n", {}, DriveProblem::unreadable},
    };
    for (const Case& c : cases) {
        const SimulatedDisc disc(c.table, 1);
        const auto drives = driveOf(disc);
        Drive& drive = drives->at(0);
        std::vector<int> lengths;
        for (const platform::DiscTrack& track : drive.tracks())
            lengths.push_back(track.sectorCount);
        EXPECT_EQ(lengths, c.lengths) << c.what;
        EXPECT_EQ(drive.description().problem, c.problem) << c.what;
        EXPECT_EQ(drive.description().disc, c.problem == DriveProblem::none) << c.what;
        EXPECT_EQ(drive.openDisc() != nullptr, c.problem == DriveProblem::none) << c.what;
    }
}

TEST(RealDrive, namesEachProblemAndItsRemedy)
{
    struct Case {
        const char* lines;
        DriveProblem problem;
        const char* remedy;
        base::Failure::Kind kind;
    };
    const Case cases[] = {
        {"fault missing\n", DriveProblem::noDevice, "connect it", base::Failure::Kind::notFound},
        {"fault denied\ngroup 0\n", DriveProblem::noPermission, "usermod -aG root ", base::Failure::Kind::refused},
        {"fault busy\n", DriveProblem::busy, "close that program", base::Failure::Kind::refused},
        {"door open\n", DriveProblem::trayOpen, "close it", base::Failure::Kind::notFound},
        {"medium out\n", DriveProblem::noDisc, "put an audio disc in", base::Failure::Kind::notFound},
    };
    for (const Case& c : cases) {
        const SimulatedDisc disc;
        disc.page(c.lines);
        const auto drives = driveOf(disc);
        const platform::DriveDescription& description = drives->at(0).description();
        EXPECT_EQ(description.problem, c.problem) << c.lines;
        EXPECT_NE(description.problemText.find(c.remedy), std::string::npos) << description.problemText;
        EXPECT_FALSE(drives->at(0).openDisc()) << c.lines;
        const auto table = HostDiscs(*drives, nameTracks).read(L'D');
        ASSERT_FALSE(table) << c.lines;
        EXPECT_EQ(table.failure().kind, c.kind) << c.lines;
        EXPECT_EQ(table.failure().text, description.problemText) << c.lines;
    }
}

TEST(RealDrive, tellsWhatItIsAndCanDo)
{
    const SimulatedDisc disc;
    disc.page("vendor ACME\nproduct DEEP READER\nrevision 2.7\n");
    {
        const auto drives = driveOf(disc);
        const platform::DriveDescription& description = drives->at(0).description();
        EXPECT_EQ(description.vendor, "ACME");
        EXPECT_EQ(description.product, "DEEP READER");
        EXPECT_EQ(description.revision, "2.7");
        EXPECT_EQ(description.hostPath, disc.device());
        EXPECT_EQ(description.abilities, 0x370003fu);
        EXPECT_EQ(description.maxSpeedKbps, 8467u);
        EXPECT_EQ(description.cacheKb, 2048u);
        EXPECT_TRUE(description.canOpen && description.canLock && !description.image);
    }
    disc.page("mode_page no\n");
    const auto drives = driveOf(disc);
    const platform::DriveDescription& description = drives->at(0).description();
    EXPECT_EQ(description.abilities, ability::readsAudio | ability::readsMultiSession);
    EXPECT_EQ(description.maxSpeedKbps, 0u);
    EXPECT_TRUE(description.canOpen && description.canLock);
}

TEST(RealDrive, doorFollowsItsCommandsAtOnce)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc, 1h);
    Drive& drive = drives->at(0);
    const auto reader = drive.openDisc();
    ASSERT_TRUE(reader);
    std::vector<std::byte> buffer(Disc::sectorBytes);
    // From here on the reader has the node open too, as during a rip.
    EXPECT_EQ(reader->read(0, buffer).sectors, 1u);

    EXPECT_TRUE(drive.lockDoor());
    EXPECT_TRUE(drive.doorIsLocked());
    EXPECT_FALSE(drive.openDoor());
    EXPECT_FALSE(drive.doorIsOpen());
    EXPECT_EQ(reader->read(1, buffer).sectors, 1u) << "a locked door does not disturb the reader";
    EXPECT_EQ(disc.state(), "door closed\nlock on\n");

    EXPECT_TRUE(drive.unlockDoor());
    EXPECT_FALSE(drive.doorIsLocked());
    EXPECT_EQ(disc.state(), "door closed\nlock off\n");

    EXPECT_TRUE(drive.openDoor());
    EXPECT_TRUE(drive.doorIsOpen());
    EXPECT_TRUE(drive.tracks().empty());
    EXPECT_EQ(drive.description().problem, DriveProblem::trayOpen);
    EXPECT_EQ(reader->read(2, buffer).end, Disc::ReadEnd::gone);
    EXPECT_EQ(disc.state(), "door open\nlock off\n");

    EXPECT_TRUE(drive.closeDoor());
    EXPECT_FALSE(drive.doorIsOpen());
    EXPECT_TRUE(eventually([&] { return drive.tracks().size() == 3; })) << "closing wakes the watch";
    EXPECT_EQ(disc.state(), "door closed\nlock off\n");
}

TEST(RealDrive, kernelIsToldOfAnUnlockingPastItWhenTheReaderIsGone)
{
    const SimulatedDisc disc;
    disc.page("log " + (disc.folder() / "log").string() + "\n");
    const auto drives = driveOf(disc, 20ms);
    auto reader = drives->at(0).openDisc();
    std::vector<std::byte> buffer(Disc::sectorBytes);
    ASSERT_EQ(reader->read(0, buffer).sectors, 1u);
    ASSERT_TRUE(drives->at(0).lockDoor());
    ASSERT_TRUE(drives->at(0).unlockDoor());
    reader.reset();
    // CDROM_LOCKDOOR is 0x5329.
    EXPECT_TRUE(eventually([&] {
        std::ifstream log(disc.folder() / "log");
        std::string line;
        int granted = 0;
        while (std::getline(log, line))
            granted += line == "request 5329: 0" ? 1 : 0;
        return granted == 2;
    }));
}

TEST(RealDrive, endOfTheProgramUnlocksOnlyWhatItLocked)
{
    const SimulatedDisc disc;
    {
        const auto drives = driveOf(disc);
        drives->unlockAll();
        EXPECT_EQ(disc.state(), "") << "nothing was locked";
        ASSERT_TRUE(drives->at(0).lockDoor());
        drives->unlockAll();
        EXPECT_EQ(disc.state(), "door closed\nlock off\n");
    }
    const auto hanging = driveOf(disc, 20ms);
    ASSERT_TRUE(hanging->at(0).lockDoor());
    disc.page("slow_command 700000\n");
    std::this_thread::sleep_for(100ms);
    const auto begin = std::chrono::steady_clock::now();
    hanging->unlockAll();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2500ms);
    disc.page("");
}

TEST(RealDrive, watchNoticesADiscThatGoesAndComes)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc, DriveSources{.opener = nullptr}.interval);
    Drive& drive = drives->at(0);
    EXPECT_EQ(drive.tracks().size(), 3u);

    disc.page("medium out\n");
    EXPECT_TRUE(eventually([&] { return drive.tracks().empty(); }));
    disc.page("door open\n");
    EXPECT_TRUE(eventually([&] { return drive.doorIsOpen(); }));
    disc.page("door closed\n");
    EXPECT_TRUE(eventually([&] { return !drive.doorIsOpen() && drive.tracks().size() == 3; }));
    disc.page("fault missing\n");
    EXPECT_TRUE(eventually([&] { return drive.description().problem == DriveProblem::noDevice; }));
    disc.page("product ANOTHER\n");
    EXPECT_TRUE(eventually([&] { return drive.tracks().size() == 3; })) << "plugged in again";
    EXPECT_EQ(drive.description().product, "ANOTHER");
}

TEST(RealDrive, questionsAreAnsweredWhileTheDriveHangs)
{
    const SimulatedDisc disc;
    const auto drives = driveOf(disc, 10ms);
    Drive& drive = drives->at(0);
    const auto reader = drive.openDisc();
    disc.page("slow_read 1500000\nslow_command 150000\n");
    std::vector<std::byte> buffer(Disc::sectorBytes);
    std::atomic<bool> isRead = false;
    std::thread reading([&] {
        EXPECT_EQ(reader->read(0, buffer).sectors, 1u);
        isRead = true;
    });
    std::this_thread::sleep_for(50ms);

    for (int round = 0; round < 100; ++round) {
        EXPECT_EQ(drive.tracks().size(), 3u);
        EXPECT_FALSE(drive.doorIsOpen());
        EXPECT_FALSE(drive.doorIsLocked());
        EXPECT_TRUE(drive.description().disc);
        EXPECT_TRUE(drive.openDisc());
        EXPECT_TRUE(drive.names().titles.empty());
    }
    EXPECT_FALSE(isRead) << "no answer waited for the drive";
    reading.join();
    disc.page("");
}

TEST(RealDrive, aDriveThatSpinsUpIsBusyAndThenReady)
{
    const SimulatedDisc disc;
    disc.page("ready no\n");
    const auto drives = driveOf(disc, 50ms, 100ms);
    EXPECT_EQ(drives->at(0).description().problem, DriveProblem::busy);
    disc.page("");
    EXPECT_TRUE(eventually([&] { return drives->at(0).description().disc; }));

    disc.page("ready no\n");
    std::thread later([&] {
        std::this_thread::sleep_for(300ms);
        disc.page("");
    });
    EXPECT_TRUE(driveOf(disc)->at(0).description().disc) << "the set waits for it";
    later.join();
}

}
}
