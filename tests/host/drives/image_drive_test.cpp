#include "host/drives/image_drive.h"

#include "host/drives/drive_abilities.h"
#include "host/drives/host_discs.h"
#include "host/drives/host_drives.h"
#include "simulated_disc.h"

#include <fstream>
#include <gtest/gtest.h>

namespace tonquay::host {
namespace {

using namespace std::chrono_literals;
using base::Failure;
using platform::DriveProblem;

/// Four sectors of silence.
class FakeImage : public Disc {
public:
    explicit FakeImage(bool audio) : tracks_{{1, 0, 4, audio}} {}

    const std::vector<platform::DiscTrack>& tracks() const override { return tracks_; }
    const platform::DiscNames& names() const override { return names_; }
    Read read(int, std::span<std::byte> buffer) override { return {buffer.size() / sectorBytes, ReadEnd::full}; }

private:
    std::vector<platform::DiscTrack> tracks_;
    platform::DiscNames names_{
        .artist = L"Somebody", .album = {}, .year = {}, .genre = {}, .comment = {}, .titles = {}};
};

/// A sheet of one word: the name of its data file, or what is wrong with it.
base::Result<std::unique_ptr<Disc>> openFake(const std::filesystem::path& sheet)
{
    std::ifstream input(sheet);
    std::string word;
    if (!(input >> word))
        return Failure{Failure::Kind::notFound, sheet.string(), "no such file"};
    if (word == "broken")
        return Failure{Failure::Kind::invalid, sheet.string() + ":7", "times run backwards"};
    if (word != "data" && !std::filesystem::exists(sheet.parent_path() / word))
        return Failure{Failure::Kind::notFound, sheet.string() + ":1", word + " is missing"};
    return std::unique_ptr<Disc>(std::make_unique<FakeImage>(word != "data"));
}

class ImageDrives : public testing::Test {
protected:
    void write(const char* name, const std::string& text) const { std::ofstream(folder / name) << text; }

    std::unique_ptr<HostDriveSet> drives(std::chrono::milliseconds interval = 50ms) const
    {
        return driveSet({.images = {folder / "disc.cue"}, .machine = false, .interval = interval, .opener = openFake});
    }

    const SimulatedDisc place{SimulatedDisc::threeTracks, 1};
    const std::filesystem::path folder = place.folder();
};

TEST_F(ImageDrives, tellHonestlyWhatTheyAre)
{
    write("disc.cue", "a.bin");
    write("a.bin", "x");
    const auto set = drives();
    const platform::DriveDescription& description = set->at(0).description();
    EXPECT_EQ(description.letter, L'D');
    EXPECT_TRUE(description.image && description.disc && description.canOpen && description.canLock);
    EXPECT_EQ(description.product, "disc.cue");
    EXPECT_EQ(description.abilities, ability::readsAudio | ability::streamIsAccurate);
    EXPECT_EQ(set->at(0).names().artist, L"Somebody");
}

TEST_F(ImageDrives, doorOpensClosesAndLocks)
{
    write("disc.cue", "a.bin");
    write("a.bin", "x");
    const auto set = drives(1h);
    Drive& drive = set->at(0);
    const auto reader = drive.openDisc();
    ASSERT_TRUE(reader);
    std::vector<std::byte> buffer(Disc::sectorBytes);

    EXPECT_TRUE(drive.lockDoor() && drive.doorIsLocked());
    EXPECT_FALSE(drive.openDoor());
    EXPECT_EQ(reader->read(0, buffer).end, Disc::ReadEnd::full);
    EXPECT_TRUE(drive.unlockDoor() && !drive.doorIsLocked());

    EXPECT_TRUE(drive.openDoor() && drive.doorIsOpen());
    EXPECT_TRUE(drive.tracks().empty());
    EXPECT_FALSE(drive.openDisc());
    EXPECT_EQ(drive.description().problem, DriveProblem::trayOpen);
    EXPECT_EQ(reader->read(0, buffer).end, Disc::ReadEnd::gone);

    EXPECT_TRUE(drive.closeDoor() && !drive.doorIsOpen());
    EXPECT_EQ(drive.tracks().size(), 1u);
    EXPECT_EQ(reader->read(0, buffer).end, Disc::ReadEnd::gone) << "the reader of before";
    EXPECT_TRUE(drive.openDisc());
}

TEST_F(ImageDrives, aFileThatGoesAwayIsADiscTakenOut)
{
    write("disc.cue", "a.bin");
    write("a.bin", "x");
    const auto set = drives(DriveSources{.opener = nullptr}.interval);
    Drive& drive = set->at(0);
    const auto reader = drive.openDisc();
    std::vector<std::byte> buffer(Disc::sectorBytes);
    for (const char* name : {"a.bin", "disc.cue"}) {
        ASSERT_EQ(drive.tracks().size(), 1u);
        std::filesystem::rename(folder / name, folder / "away");
        EXPECT_TRUE(eventually([&] { return drive.tracks().empty(); })) << name;
        EXPECT_EQ(drive.description().problem, DriveProblem::noDisc) << name;
        EXPECT_EQ(reader->read(0, buffer).end, Disc::ReadEnd::gone) << name;
        std::filesystem::rename(folder / "away", folder / name);
        EXPECT_TRUE(eventually([&] { return drive.tracks().size() == 1; })) << name;
    }
}

TEST_F(ImageDrives, aReaderGoesOnWhileItsFilesAreSpoilt)
{
    write("disc.cue", "a.bin");
    write("a.bin", "x");
    const auto set = drives(20ms);
    Drive& drive = set->at(0);
    auto reader = drive.openDisc();
    write("disc.cue", "broken");
    std::this_thread::sleep_for(100ms);
    std::vector<std::byte> buffer(Disc::sectorBytes);
    EXPECT_EQ(reader->read(0, buffer).end, Disc::ReadEnd::full);
    reader.reset();
    EXPECT_TRUE(eventually([&] { return drive.description().problem == DriveProblem::unreadable; }));
}

TEST_F(ImageDrives, tellWhyTheyGiveNoDisc)
{
    struct Case {
        const char* what;
        const char* sheet;
        DriveProblem problem;
        std::string text;
    };
    const std::string path = (folder / "disc.cue").string();
    const Case cases[] = {
        {"no sheet", "", DriveProblem::noDevice, "There is no image " + path + ": name one that exists"},
        {"broken", "broken", DriveProblem::unreadable, path + ":7: times run backwards"},
        {"data missing from the start", "b.bin", DriveProblem::unreadable, path + ":1: b.bin is missing"},
        {"data only", "data", DriveProblem::dataDisc, "The disc holds data only: put an audio disc in"},
    };
    for (const Case& c : cases) {
        std::filesystem::remove(folder / "disc.cue");
        if (*c.sheet)
            write("disc.cue", c.sheet);
        const auto set = drives();
        EXPECT_EQ(set->at(0).description().problem, c.problem) << c.what;
        EXPECT_EQ(set->at(0).description().problemText, c.text) << c.what;
        EXPECT_FALSE(set->at(0).openDisc()) << c.what;
    }
}

TEST(DriveSet, givesLettersToImagesFirstAndNamesADriveOnce)
{
    const SimulatedDisc disc;
    std::ofstream(disc.folder() / "a.cue") << "drive.txt";
    const auto set = driveSet({.images = {disc.folder() / "a.cue", disc.folder() / "none.cue"},
                               .devices = {disc.device(), "/nowhere/sr7", disc.device(), "/dev/null"},
                               .machine = false,
                               .opener = openFake});
    HostDiscs discs(*set, [](const auto& tracks) { return std::to_string(tracks.size()); });
    std::string told;
    for (const platform::DriveDescription& drive : discs.drives())
        told += std::string{static_cast<char>(drive.letter)} + (drive.image ? " image " : " drive ") +
                std::to_string(static_cast<int>(drive.problem)) + "\n";
    // 0: none, 1: no device.
    EXPECT_EQ(told, "D image 0\nE image 1\nF drive 0\nG drive 1\nH drive 1\n");

    const auto table = discs.read(L'f');
    ASSERT_TRUE(table);
    EXPECT_EQ(table->tracks.size(), 3u);
    EXPECT_EQ(table->discId, "3");
    ASSERT_TRUE(discs.read(L'D'));
    EXPECT_EQ(discs.read(L'D')->names.artist, L"Somebody");
    for (const wchar_t letter : {L'C', L'I', L'\0'})
        EXPECT_FALSE(discs.read(letter));

    const auto many = driveSet({.images = std::vector<std::filesystem::path>(40, disc.folder() / "a.cue"),
                                .machine = false,
                                .opener = openFake});
    ASSERT_EQ(many->count(), 23u);
    EXPECT_EQ(many->at(22).description().letter, L'Z');
}

}
}
