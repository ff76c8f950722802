#include "launcher/launch_desk.h"
#include "state/suite_files.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::launcher {
namespace {

using platform::DiscNames;
using platform::DriveDescription;
using testing::HasSubstr;

struct Desk : testing::Test {
    test::FakeHost host;
    Machine machine{.programFolder = L"C:\\CDTONQUAY",
                    .keptNamesFolder = L"C:\\Names",
                    .ripper = L"C:\\opt\\my apps\\ripdeck",
                    .musicFolder = L"C:\\home\\ann\\Music",
                    .mixer = L"C:\\usr\\bin\\pavucontrol",
                    .programs = {}};
    DriveDescription drive{.letter = L'D', .hostPath = "/dev/sr0", .disc = true};
    DiscNames own{.artist = L"Ann Lee", .album = L"First Light", .titles = {L"Dawn", L"Noon"}};

    Desk()
    {
        host.files.putFolder(L"C:\\CDTONQUAY");
        host.files.putFolder(L"C:\\Names");
        host.processes.scripts = {{.named = L"ripdeck"}};
        host.discs.tables[L'D'] = {.tracks = {{.number = 1, .sectorCount = 750}, {.number = 2, .sectorCount = 750}},
                                   .names = own,
                                   .discId = "Ab.cD_e-"};
    }

    std::string handOver() { return host.files.contents(L"C:\\CDTONQUAY\\audiocd.dat").value_or("none"); }
};

TEST_F(Desk, choosesTheDriveOfTheSettingsIfItHasADisc)
{
    struct Case {
        const char* what;
        const char* saved;
        std::vector<bool> discs;
        std::optional<wchar_t> chosen;
    };
    const Case cases[] = {
        {"no settings: the first with a disc", "", {false, true, true}, L'E'},
        {"the saved one", "\"f\"", {true, true, true}, L'F'},
        {"the saved one is empty", "\"F\"", {true, true, false}, L'D'},
        {"the saved one is gone", "\"Q\"", {false, true}, L'E'},
        {"none holds a disc", "\"D\"", {false, false}, std::nullopt},
        {"no drives", "", {}, std::nullopt},
    };
    for (const Case& c : cases) {
        if (*c.saved != '\0')
            host.files.put(L"C:\\CDTONQUAY\\acdset.ini", std::string(c.saved) + ",\"C:\\m\"\r\n");
        std::vector<DriveDescription> drives;
        for (std::size_t i = 0; i < c.discs.size(); ++i)
            drives.push_back({.letter = static_cast<wchar_t>(L'D' + static_cast<wchar_t>(i)), .disc = c.discs[i]});
        const auto chosen = LaunchDesk(host.platform(), machine).choose(drives);
        EXPECT_EQ(chosen ? std::optional(chosen->letter) : std::nullopt, c.chosen) << c.what;
    }
}

TEST_F(Desk, staysWithTheDriveItHandedOverUntilTheSettingsChange)
{
    const std::vector<DriveDescription> both{{.letter = L'D', .disc = true}, {.letter = L'E', .disc = true}};
    host.discs.tables[L'E'] = host.discs.tables[L'D'];
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"D\",\"C:\\m\"\r\n");
    LaunchDesk desk(host.platform(), machine);
    EXPECT_EQ(desk.choose(both)->letter, L'D');
    const auto disc = desk.look(host.discs, both[1]);
    ASSERT_TRUE(disc && desk.startRipper(*disc, disc->names));
    EXPECT_EQ(desk.choose(both)->letter, L'E') << "a disc that was changed there is looked for there";
    EXPECT_EQ(desk.choose({{.letter = L'D', .disc = true}, {.letter = L'E', .disc = false}})->letter, L'D');
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"F\",\"C:\\m\"\r\n");
    EXPECT_EQ(desk.choose(both)->letter, L'D') << "neither the old word nor a drive that is gone";
}

TEST_F(Desk, handsTheDiscOverAndStartsTheRipper)
{
    LaunchDesk desk(host.platform(), machine);
    const auto disc = desk.look(host.discs, drive);
    ASSERT_TRUE(disc);
    EXPECT_EQ(disc->source, NameSource::disc);
    ASSERT_TRUE(desk.startRipper(*disc, disc->names));
    EXPECT_THAT(handOver(), testing::StartsWith("\"Ann Lee\",\"First Light\",2\r\n\"Dawn\"\r\n\"Noon\"\r\n\"\""));
    EXPECT_THAT(handOver(), HasSubstr("\"D\""));
    ASSERT_EQ(host.processes.started.size(), 1U);
    EXPECT_EQ(host.processes.started[0].command, L"\"C:\\opt\\my apps\\ripdeck\" C:\\CDTONQUAY");
    EXPECT_FALSE(host.files.fileExists(L"C:\\Names\\+Ab.c+D_e-.json")) << "nothing was changed";
}

TEST_F(Desk, changedNamesComeBackWithTheDisc)
{
    LaunchDesk desk(host.platform(), machine);
    auto disc = desk.look(host.discs, drive);
    DiscNames mine = disc->names;
    mine.artist = L"Anna \"Lee\" Ä";
    mine.titles[1] = L"夜明け";
    ASSERT_TRUE(desk.startRipper(*disc, mine));
    const auto again = LaunchDesk(host.platform(), machine).look(host.discs, drive);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->source, NameSource::kept);
    EXPECT_TRUE(sameNames(again->names, mine));

    host.discs.tables[L'D'].discId = "aB.Cd_e-";
    EXPECT_EQ(desk.look(host.discs, drive)->source, NameSource::disc) << "another disc, though the case alone differs";
}

TEST_F(Desk, keptNamesThatAreBrokenCountAsNone)
{
    const std::pair<std::string, NameSource> cases[] = {
        {"", NameSource::disc},
        {"[1,2]", NameSource::disc},
        {"{\"artist\":", NameSource::disc},
        {std::string(100000, '['), NameSource::disc},
        {"{\"artist\":7,\"titles\":{}}", NameSource::kept},
        {"{\"artist\":\"A\",\"titles\":[1,null,\"x\",\"y\",\"z\"]}", NameSource::kept},
    };
    for (const auto& [bytes, source] : cases) {
        host.files.put(L"C:\\Names\\+Ab.c+D_e-.json", bytes);
        const auto disc = LaunchDesk(host.platform(), machine).look(host.discs, drive);
        ASSERT_TRUE(disc);
        EXPECT_EQ(disc->source, source) << bytes.substr(0, 40);
        EXPECT_EQ(disc->names.titles.size(), 2U) << "as many as there are tracks";
    }
}

TEST_F(Desk, sourceOfNames)
{
    drive.image = true;
    EXPECT_EQ(LaunchDesk(host.platform(), machine).look(host.discs, drive)->source, NameSource::sheet);
    host.discs.tables[L'D'].names = {};
    EXPECT_EQ(LaunchDesk(host.platform(), machine).look(host.discs, drive)->source, NameSource::nowhere);
    host.discs.tables.clear();
    EXPECT_FALSE(LaunchDesk(host.platform(), machine).look(host.discs, drive));
}

TEST_F(Desk, failuresAreToldAndStartNothing)
{
    LaunchDesk desk(host.platform(), machine);
    const auto disc = desk.look(host.discs, drive);
    host.files.fail(test::FakeFileSystem::Operation::writeWhole, L"C:\\CDTONQUAY\\audiocd.dat");
    EXPECT_FALSE(desk.startRipper(*disc, disc->names));
    EXPECT_TRUE(host.processes.started.empty());

    machine.ripper.clear();
    const auto missing = LaunchDesk(host.platform(), machine).startRipper(*disc, disc->names);
    ASSERT_FALSE(missing);
    EXPECT_THAT(base::describe(missing.failure()), HasSubstr("not installed"));
}

TEST_F(Desk, firstSettingsAreWrittenOnce)
{
    LaunchDesk desk(host.platform(), machine);
    desk.writeFirstSettings();
    state::Folders folders;
    folders.appFolder = machine.programFolder;
    EXPECT_EQ(state::readDataFolder(host.files, host.log, folders), machine.musicFolder);
    std::wstring mixer;
    state::readMixerPath(host.files, host.log, folders, mixer);
    EXPECT_EQ(mixer, machine.mixer);

    host.files.put(L"C:\\CDTONQUAY\\tqwin.ini", "mine");
    host.files.put(L"C:\\CDTONQUAY\\TQWIN1.INI", "mine");
    desk.writeFirstSettings();
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\tqwin.ini"), "mine");
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\TQWIN1.INI"), "mine");
}

TEST_F(Desk, missingEncodersAreNamedWithTheirPackage)
{
    const base::Failure gone{base::Failure::Kind::notFound, "", ""};
    EXPECT_EQ(LaunchDesk(host.platform(), machine).encoderWarning(), "");
    machine.programs.lame = gone;
    EXPECT_THAT(LaunchDesk(host.platform(), machine).encoderWarning(), HasSubstr("package lame"));
    machine.programs.oggenc = gone;
    EXPECT_THAT(LaunchDesk(host.platform(), machine).encoderWarning(), HasSubstr("WAV"));
    machine.programs.lame = {};
    EXPECT_THAT(LaunchDesk(host.platform(), machine).encoderWarning(), HasSubstr("vorbis-tools"));
}

}
}
