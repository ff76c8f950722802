#include "console/run.h"

#include "base/text.h"
#include "fake_screen.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

#include <stdlib.h>

namespace tonquay::console {
namespace {

using platform::DriveDescription;
using platform::DriveProblem;
using testing::ElementsAre;
using testing::HasSubstr;

class FakeDiscs final : public platform::Discs {
public:
    std::vector<DriveDescription> drives() override { return found; }
    base::Result<platform::DiscTable> read(wchar_t letter) override
    {
        asked = letter;
        if (table.tracks.empty())
            return base::Failure{base::Failure::Kind::unreadable, "/dev/sr0", "the table cannot be read"};
        return table;
    }

    std::vector<DriveDescription> found;
    platform::DiscTable table;
    wchar_t asked = 0;
};

struct World {
    FakeDiscs discs;
    FakeScreen screen;
    test::FakeHost host;
    DiscChoice choice;

    ExitStatus run(const std::vector<std::string>& arguments)
    {
        struct Borrowed final : Host {
            explicit Borrowed(World& w) : world(w) {}
            platform::Discs& discs() override { return world.discs; }
            base::Result<platform::Platform> open(RunListener) override { return world.host.platform(); }
            platform::MachinePrograms programs() override { return {}; }
            std::string programOutput() override { return {}; }
            void endChildren() override {}
            base::Result<std::string> findProgram(const std::string& name) override
            {
                if (name == "lame" || name == "oggenc")
                    return "/usr/bin/" + name;
                return base::Failure{base::Failure::Kind::notFound, name, "no program of this name is on PATH"};
            }
            base::Result<std::wstring> linkEncoder(const std::string&, const std::string&) override
            {
                return std::wstring(L"C:\\CDTONQUAY\\encoder\\lame");
            }
            std::string savedSettingsFolder() override { return world.host.files.hostPath(L"C:\\SAVED"); }
            std::string musicFolder() override { return {}; }
            base::Result<platform::FileTags> readTags(const std::string& path, platform::SoundReading) override
            {
                return base::Failure{base::Failure::Kind::notFound, path, "there are no files here"};
            }
            base::Result<platform::WmaFile> readWma(const std::string& path) override
            {
                return base::Failure{base::Failure::Kind::notFound, path, "there are no files here"};
            }
            World& world;
        };
        return console::run(arguments, screen, [this](const DiscChoice& made) -> base::Result<std::unique_ptr<Host>> {
            choice = made;
            return std::unique_ptr<Host>(std::make_unique<Borrowed>(*this));
        });
    }
};

DriveDescription drive(wchar_t letter, bool disc, DriveProblem problem = DriveProblem::none, std::string text = {})
{
    DriveDescription d;
    d.letter = letter;
    d.vendor = "ACME";
    d.product = "Spin";
    d.revision = "1.0";
    d.hostPath = "/dev/sr" + std::to_string(letter - L'D');
    d.disc = disc;
    d.abilities = 0x1000001;
    d.canOpen = true;
    d.maxSpeedKbps = 8467;
    d.problem = problem;
    d.problemText = std::move(text);
    return d;
}

platform::DiscTable disc()
{
    platform::DiscTable table;
    table.tracks = {{.number = 1, .firstSector = 0, .sectorCount = 75 * 205, .audio = true},
                    {.number = 2, .firstSector = 15375, .sectorCount = 75 * 60, .audio = true},
                    {.number = 3, .firstSector = 19875, .sectorCount = 1000, .audio = false}};
    table.names = {.artist = L"Ännchen",
                   .album = L"千",
                   .year = L"1999",
                   .genre = L"Rock",
                   .comment = {},
                   .titles = {L"Red \x1b[31m\nthing", L"Caf\xDCE9"}};
    return table;
}

TEST(List, showsTheTableAlignedAndHarmless)
{
    World world;
    world.discs.found = {drive(L'D', false, DriveProblem::noDisc, "no disc"), drive(L'E', true)};
    world.discs.table = disc();
    EXPECT_EQ(world.run({"list"}), ExitStatus::good);
    EXPECT_EQ(world.discs.asked, L'E');
    EXPECT_EQ(world.screen.out, "Artist   Ännchen\n"
                                "Album    千\n"
                                "Year     1999\n"
                                "Genre    Rock\n"
                                "\n"
                                "Track      Time  Size, MB  Title\n"
                                "    1      3:25      34.5  Red \uFFFD[31m\uFFFDthing\n"
                                "    2      1:00      10.1  Caf\uFFFD\n"
                                "    3      0:13       2.2  [data]\n");
    EXPECT_THAT(world.screen.problems, ElementsAre());
}

TEST(List, jsonHoldsEverythingAndParses)
{
    World world;
    world.discs.found = {drive(L'D', true)};
    world.discs.table = disc();
    EXPECT_EQ(world.run({"list", "--json", "d:"}), ExitStatus::good);
    EXPECT_TRUE(base::isUtf8(world.screen.out));
    const auto json = nlohmann::ordered_json::parse(world.screen.out);
    std::vector<std::string> keys;
    for (const auto& [key, value] : json.items())
        keys.push_back(key);
    EXPECT_THAT(keys, ElementsAre("artist", "album", "year", "genre", "comment", "tracks"));
    EXPECT_EQ(json["artist"], "Ännchen");
    const nlohmann::ordered_json first = {{"number", 1},   {"seconds", 205},    {"title", "Red \x1b[31m\nthing"},
                                          {"audio", true}, {"first_sector", 0}, {"sectors", 15375}};
    EXPECT_EQ(json["tracks"][0].dump(), first.dump());
    EXPECT_EQ(json["tracks"][1]["title"], "Caf\uFFFD");
    EXPECT_EQ(json["tracks"][2]["audio"], false);
    EXPECT_EQ(json["tracks"][2]["title"], "");
}

TEST(List, whatIsNoDiscEndsWith3AndOneLine)
{
    const std::string folder = std::filesystem::temp_directory_path().string();
    const struct {
        const char* what;
        std::vector<std::string> arguments;
        std::vector<DriveDescription> drives;
        const char* says;
    } cases[] = {
        {"no drive", {"list"}, {}, "no drive was found"},
        {"one drive, tray open",
         {"list"},
         {drive(L'D', false, DriveProblem::trayOpen, "the tray is open; close it")},
         "/dev/sr0: the tray is open; close it"},
        {"two drives, no disc", {"list"}, {drive(L'D', false), drive(L'E', false)}, "no drive holds an audio disc"},
        {"another letter", {"list", "F"}, {drive(L'D', true)}, "F: there is no drive of this letter"},
        {"its letter, no disc", {"list", "E:"}, {drive(L'D', true), drive(L'E', false)}, "there is no audio disc"},
        {"no such file", {"list", folder + "/no such.cue"}, {drive(L'D', true)}, "there is no such file"},
        {"a folder", {"list", folder}, {drive(L'D', true)}, "this is a folder"},
        {"another file", {"list", "/proc/self/exe"}, {drive(L'D', true)}, "no disc image"},
        {"no drive of the machine", {"list", "/dev/null"}, {drive(L'D', true)}, "/dev/null: this is no drive"},
        {"a table that cannot be read", {"list", "D"}, {drive(L'D', true)}, "the table cannot be read"},
    };
    for (const auto& c : cases) {
        World world;
        world.discs.found = c.drives;
        EXPECT_EQ(world.run(c.arguments), ExitStatus::noDisc) << c.what;
        EXPECT_EQ(world.screen.out, "") << c.what;
        EXPECT_THAT(world.screen.problems, ElementsAre(HasSubstr(c.says))) << c.what;
    }
}

TEST(DiscChoice, isMadeFromTheTextAlone)
{
    using Kind = DiscChoice::Kind;
    const struct {
        const char* text;
        Kind kind;
        wchar_t letter;
    } cases[] = {
        {"", Kind::any, 0},           {"e", Kind::letter, L'E'},      {"Z:", Kind::letter, L'Z'},
        {"d:\\", Kind::letter, L'D'}, {"d:/", Kind::letter, L'D'},    {"./d", Kind::device, 0},
        {"4", Kind::device, 0},       {"dd", Kind::device, 0},        {"/dev/sr0", Kind::device, 0},
        {"a.cue", Kind::image, 0},    {"A.CUE", Kind::image, 0},      {"x/y.Toc", Kind::image, 0},
        {"a.nrg", Kind::image, 0},    {"a.cue.bak", Kind::device, 0}, {".cue", Kind::device, 0},
        {"a.bin", Kind::device, 0},
    };
    for (const auto& c : cases) {
        const DiscChoice choice = discChoice(c.text);
        EXPECT_EQ(choice.kind, c.kind) << c.text;
        EXPECT_EQ(choice.letter, c.letter) << c.text;
        const bool path = c.kind == Kind::image || c.kind == Kind::device;
        EXPECT_EQ(choice.path, path ? c.text : "") << c.text;
    }
}

TEST(DiscChoice, twoNamesOfOneImageAreOneDrive)
{
    std::string folder = (std::filesystem::temp_directory_path() / "tonquay-choice-XXXXXX").string();
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    std::ofstream(folder + "/disc.cue") << "x";
    std::filesystem::create_symlink("disc.cue", folder + "/other.cue");

    World world;
    world.discs.found = {drive(L'D', true), drive(L'E', true)};
    world.discs.found[1].hostPath = folder + "/disc.cue";
    world.discs.table = disc();
    EXPECT_EQ(world.run({"list", folder + "/other.cue"}), ExitStatus::good);
    EXPECT_EQ(world.choice.kind, DiscChoice::Kind::image);
    EXPECT_EQ(world.discs.asked, L'E');
    std::filesystem::remove_all(folder);
}

TEST(Drives, tellWhatTheyCanDoAndWhatIsMissing)
{
    World world;
    world.discs.found = {drive(L'D', true),
                         drive(L'E', false, DriveProblem::noPermission, "no permission; join the group cdrom")};
    EXPECT_EQ(world.run({"drives"}), ExitStatus::good);
    EXPECT_EQ(world.screen.out, "D:  /dev/sr0\n"
                                "    Drive    ACME Spin 1.0\n"
                                "    Disc     an audio disc\n"
                                "    Reads    CD-R, CD audio, opens and closes\n"
                                "    Speed    8467 Kbps\n"
                                "E:  /dev/sr1\n"
                                "    Drive    ACME Spin 1.0\n"
                                "    Disc     none\n"
                                "    Problem  no permission; join the group cdrom\n"
                                "    Reads    CD-R, CD audio, opens and closes\n"
                                "    Speed    8467 Kbps\n");
}

TEST(Drives, jsonKeepsItsKeys)
{
    World world;
    world.discs.found = {drive(L'D', true), drive(L'E', false, DriveProblem::busy, "another program has it")};
    world.discs.found[0].product = "Sp\xFFin\x1b";
    EXPECT_EQ(world.run({"drives", "--json"}), ExitStatus::good);
    const auto json = nlohmann::ordered_json::parse(world.screen.out);
    ASSERT_EQ(json.size(), 2u);
    std::vector<std::string> keys;
    for (const auto& [key, value] : json[0].items())
        keys.push_back(key);
    EXPECT_THAT(keys, ElementsAre("letter", "vendor", "product", "revision", "path", "image", "disc", "capabilities",
                                  "max_speed_kbps", "cache_kb", "problem"));
    EXPECT_EQ(json[0]["letter"], "D");
    EXPECT_EQ(json[0]["product"], "Sp\uFFFDin\x1b");
    EXPECT_TRUE(json[0]["problem"].is_null());
    EXPECT_EQ(json[0]["capabilities"]["read_audio"], true);
    EXPECT_EQ(json[0]["capabilities"]["read_dvd_rom"], false);
    EXPECT_EQ(json[0]["capabilities"]["open_close"], true);
    EXPECT_EQ(json[1]["problem"], "busy: another program has it");
}

TEST(Drives, withoutAnyTheAnswerIsEmptyAndTheStatus3)
{
    World world;
    EXPECT_EQ(world.run({"drives", "--json"}), ExitStatus::noDisc);
    EXPECT_EQ(world.screen.out, "[]\n");
    EXPECT_THAT(world.screen.problems, ElementsAre(HasSubstr("no drive was found")));
}

TEST(Run, outputThatIsLostIsNoSuccess)
{
    World world;
    world.screen.broken = true;
    EXPECT_EQ(world.run({"--version"}), ExitStatus::incomplete);
    EXPECT_EQ(world.run({"rip", "--format", "flac"}), ExitStatus::usage);
}

TEST(Rip, refusesWhatItCannotDoBeforeAnythingIsWritten)
{
    struct Case {
        const char* what;
        std::vector<std::string> options;
        const char* says;
    };
    const Case cases[] = {
        {"a data track", {"--tracks", "3"}, "3"},
        {"a track that is not there", {"--tracks", "9"}, "9"},
        {"a title for a track that is not there", {"--title", "9=Night"}, "9"},
        {"the default format without its encoder", {"--output", "/out"}, "lame: the encoder does not start"},
        {"an encoder that is no program", {"--encoder", "/etc/passwd"}, "/etc/passwd: this is no program"},
        {"an encoder that is not there", {"--encoder", "no such encoder"}, "no program of this name"},
        {"an encoder of the other format", {"-f", "ogg", "--encoder", "/bin/true"}, "holds \"ogg\""},
        {"variable bitrate for Ogg", {"-f", "ogg", "--vbr", "3"}, "--vbr: only --format mp3"},
        {"a rate as an Ogg quality", {"-f", "ogg", "-b", "128"}, "128 does not fit the format ogg"},
        {"no output folder at all", {"--format", "wav"}, "--output"},
    };
    for (const Case& c : cases) {
        World world;
        world.discs.found = {drive(L'D', true)};
        world.discs.table = disc();
        const auto before = world.host.files.allFiles();
        std::vector<std::string> arguments{"rip"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        EXPECT_EQ(world.run(arguments), ExitStatus::usage) << c.what;
        EXPECT_THAT(world.screen.problems, ElementsAre(HasSubstr(c.says))) << c.what;
        EXPECT_EQ(world.host.files.allFiles(), before) << c.what;
    }
}

}
}
