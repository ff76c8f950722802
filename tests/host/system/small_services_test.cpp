#include "host/system/host_clock.h"
#include "host/system/host_diagnostics.h"
#include "host/system/host_settings_store.h"
#include "host/system/host_system_info.h"
#include "host/system/line_dialogs.h"
#include "host/system/places.h"
#include "real_files.h"
#include "support/fake_diagnostics.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace tonquay;
namespace fs = std::filesystem;

TEST(Places, followTheEnvironmentWhereItNamesAbsoluteFolders)
{
    std::map<std::string, std::string> environment{{"HOME", "/home/ann"}};
    const auto ask = [&](const char* name) { return environment[name]; };
    EXPECT_EQ(host::placesOf(ask).programFolder, "/home/ann/.local/share/cd-tonquay");
    EXPECT_EQ(host::placesOf(ask).settingsFile, "/home/ann/.config/cd-tonquay/settings");
    EXPECT_EQ(host::placesOf(ask).logFile, "/home/ann/.local/state/cd-tonquay/log");
    EXPECT_EQ(host::placesOf(ask).tempFolder, "/tmp");
    environment = {{"HOME", "relative"}, {"XDG_DATA_HOME", "/data"}, {"XDG_STATE_HOME", "state"}, {"TMPDIR", "/a b"}};
    EXPECT_EQ(host::placesOf(ask).programFolder, "/data/cd-tonquay");
    EXPECT_TRUE(host::placesOf(ask).logFile.starts_with('/'));
    EXPECT_EQ(host::placesOf(ask).tempFolder, "/tmp");
}

TEST(HostClock, timeOfDayIsOneOfADay)
{
    using namespace std::chrono_literals;
    const auto time = host::HostClock().timeOfDay().to_duration();
    EXPECT_GE(time, 0s);
    EXPECT_LT(time, 24h + 1s) << "a leap second is a second of its day";
}

TEST(HostSettingsStore, valuesGoRoundAndOtherLinesStay)
{
    test::TempFolder folder;
    test::FakeDiagnostics log;
    const std::string file = folder / "new/folder/settings";
    host::HostSettingsStore store(file, log);
    EXPECT_EQ(store.get(L"Main", L"Window", L"none"), L"none");
    const std::wstring values[] = {L"",          L"plain",          L" blanks ",     L" ",
                                   L"a=b[c]",    L"back\\slash\\n", L"two\r\nlines", L"Жук \U0001F3B5",
                                   L"\xDCFF raw"};
    for (const std::wstring& value : values) {
        store.set(L"Main", L"Window", value);
        store.set(L"Ot[her] =", L"k=ey", value);
        EXPECT_EQ(host::HostSettingsStore(file, log).get(L"Main", L"Window", L"none"), value);
        EXPECT_EQ(store.get(L"Ot[her] =", L"k=ey", L"none"), value);
    }
    test::writeHostFile(file, "; mine\n[A]\nx=1\n\n[B]\ny=2");
    store.set(L"A", L"z", L"3");
    store.set(L"B", L"y", L"4");
    EXPECT_EQ(test::readHostFile(file), "; mine\n[A]\nx=1\nz=3\n\n[B]\ny=4\n");
    EXPECT_EQ(store.get(L"B", L"x", L"none"), L"none") << "a key of another section";
    EXPECT_TRUE(log.lines.empty());
}

TEST(HostSettingsStore, sectionsAndKeysAreFoundInAnyCaseAndKeepTheirFirstOne)
{
    test::TempFolder folder;
    test::FakeDiagnostics log;
    test::writeHostFile(folder / "settings", "[Größe/Main]\nÄrger=1\nno setting\n");
    host::HostSettingsStore store(folder / "settings", log);
    EXPECT_EQ(store.get(L"GRÖSSE/main", L"ärger", L"none"), L"none") << "a sharp s is a letter of its own";
    EXPECT_EQ(store.get(L"gRÖßE/MAIN", L"ärGER", L"none"), L"1");
    store.set(L"größe/main", L"ÄRGER", L"2");
    EXPECT_EQ(test::readHostFile(folder / "settings"), "[Größe/Main]\nÄrger=2\nno setting\n");
    EXPECT_EQ(store.get(L"Größe/Main", L"Ärge", L"none"), L"none") << "the beginning of a key is another key";
    EXPECT_EQ(store.get(L"Größe/Main", L"no setting", L"none"), L"none");
}

TEST(HostSettingsStore, whatCannotBeReadOrWrittenIsPassedOverWithALine)
{
    test::TempFolder folder;
    test::FakeDiagnostics log;
    host::HostSettingsStore(folder.path(), log).set(L"A", L"b", L"c");
    EXPECT_EQ(log.lines.size(), 1u);
    const std::string huge(2 << 20, 'x');
    test::writeHostFile(folder / "huge", huge);
    host::HostSettingsStore store(folder / "huge", log);
    EXPECT_EQ(store.get(L"A", L"b", L"none"), L"none");
    store.set(L"A", L"b", L"c");
    EXPECT_EQ(log.lines.size(), 2u);
    EXPECT_TRUE(test::readHostFile(folder / "huge") == huge) << "what is not understood is not thrown away";
    test::writeHostFile(folder / "binary", std::string("\0\xFF[\n=\n]\0", 8));
    EXPECT_EQ(host::HostSettingsStore(folder / "binary", log).get(L"A", L"", L"none"), L"none");
}

TEST(HostDiagnostics, eachLineStaysOneLineAndTheFileStaysSmall)
{
    test::TempFolder folder;
    std::string seen;
    host::HostDiagnostics log(folder / "state/log", [&](std::string_view area, std::string_view text) {
        seen = std::string(area) + '|' + std::string(text);
    });
    log.line("files", "a\nb\x1B[31mc\r\n");
    EXPECT_EQ(seen, "files|a b [31mc ");
    const std::string text = test::readHostFile(folder / "state/log");
    EXPECT_EQ(text.substr(20), " files: a b [31mc \n");
    const std::string line(1000, 'x');
    for (int i = 0; i < 4000; ++i)
        log.line("files", line);
    EXPECT_LT(fs::file_size(folder / "state/log"), 1100u << 10);
    EXPECT_LT(fs::file_size(folder / "state/log.1"), 1100u << 10);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "state"), fs::directory_iterator()), 2);
    host::HostDiagnostics("/proc/none/log").line("files", "nobody minds");
}

TEST(HostSystemInfo, thePrivateFolderIsWritableAndGoesWithItsOwnerOrTheProgram)
{
    test::RealFiles real;
    test::FakeDiagnostics log;
    host::EndActions end;
    fs::create_directories(real.root / "tmp");
    test::writeHostFile(real.root / "cpu", "processor\t: 0\nmodel name\t:  Fast (R) CPU  \nmodel name: other\n");
    std::string folder;
    for (const bool ended : {false, true}) {
        host::HostSystemInfo info(real.files(), log, end, {real.root / "tmp", real.root / "cpu", 800, 600});
        EXPECT_TRUE(real.files().writeWhole(info.windowsFolder() + L"\\a.wav", "x"));
        EXPECT_TRUE(real.files().folderExists(info.systemFolder()));
        EXPECT_EQ(info.windowsFolder().find(L' '), std::wstring::npos);
        EXPECT_EQ(info.installPath(), L"C:\\CDTONQUAY");
        EXPECT_EQ(info.processorName(), L"Fast (R) CPU");
        EXPECT_EQ(info.screen().width, 12000);
        folder = real.files().hostPath(info.windowsFolder());
        EXPECT_TRUE(fs::exists(folder));
        if (ended)
            end.run();
        EXPECT_EQ(fs::exists(folder), !ended);
    }
    EXPECT_TRUE(fs::is_empty(real.root / "tmp"));
}

TEST(LineDialogs, aBoxIsOneLine)
{
    std::vector<std::string> lines;
    host::LineDialogs dialogs([&](std::string line) { lines.push_back(std::move(line)); });
    using D = platform::Dialogs;
    EXPECT_EQ(dialogs.messageBox(L"CD-Tonquay", L"No\r\ntrack\x1B!", D::Icon::stop, D::Buttons::ok), D::Answer::ok);
    EXPECT_EQ(dialogs.messageBox(L"", L"Sure?", D::Icon::question, D::Buttons::yesNo), D::Answer::no);
    EXPECT_EQ(lines, (std::vector<std::string>{"CD-Tonquay: No track !", "Sure?"}));
}

}
