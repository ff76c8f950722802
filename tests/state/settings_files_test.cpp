#include "state/rip_settings_file.h"
#include "state/suite_files.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::state {
namespace {

struct SettingsFiles : testing::Test {
    test::FakeHost host;
    Folders folders{L"C:\\CDTONQUAY", L"C:\\WINDOWS", L"C:\\WINDOWS\\SYSTEM", L"C:\\CDTONQUAY\\datacd"};
    Forms forms;
    RipSettings settings;

    void readSettings() { racdset(host.files, host.log, folders, forms, settings); }
};

TEST_F(SettingsFiles, everyFieldGoesOutAndComesBack)
{
    RipSettings all{
        L"E", L"C:\\Mu\"sic", 0, 6, L"C:\\x\\enc.exe", 0, 0, 1, 1, 0, 13, L"-a, -b", L"m4", 2, 1, 1, 9, 0, 1, 1, 0, 1};
    const std::string text = ripSettingsText(all);
    EXPECT_EQ(text,
              "\"E\",\"C:\\Mu'sic\",0,6,\"C:\\x\\enc.exe\",0,0,1,1,0,13,\"-a, -b\",\"m4\",2,\"1\",1,9,0,1,1,0,1\r\n");
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", text);
    readSettings();
    EXPECT_EQ(ripSettingsText(settings), text);
    EXPECT_FALSE(forms.loaded<CdriptabControls>());
}

TEST_F(SettingsFiles, shortOddAndMissingFilesLeaveDefaults)
{
    const RipSettings defaults = parseRipSettings(L"", L"C:\\data");
    EXPECT_EQ(defaults.outputFolder, L"C:\\data");
    EXPECT_EQ(defaults.ripMethod, 4);
    EXPECT_EQ(defaults.bitrateIndex, 8);
    EXPECT_EQ(defaults.dirMode, 2);

    struct Case {
        const char* what;
        const wchar_t* text;
        std::function<bool(const RipSettings&)> holds;
    };
    const Case cases[] = {
        {"21 fields leave the last", L"\"D\",\"c:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",4,\"2\",0,0,1,0,0,1",
         [](const RipSettings& s) { return s.autoClose == 0 && s.autoSelectAll == 1; }},
        {"a word for dirMode is 0", L"\"D\",\"c:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",4,\"both\"",
         [](const RipSettings& s) { return s.dirMode == 0 && s.encodeSingle == 0; }},
        {"a number that does not fit is passed over", L"\"D\",\"c:\\m\",70000,5",
         [](const RipSettings& s) { return s.createProgram == 1 && s.nameFormat == 5; }},
        {"a word for a number is passed over", L"\"D\",\"c:\\m\",yes,5",
         [](const RipSettings& s) { return s.createProgram == 1 && s.nameFormat == 5; }},
        {"blank lines at the end are no fields",
         L"\"D\",\"c:\\m\",1,0,\"e.exe\",1,1,0,0,1,8,\"\",\"\",4,\"2\",0,0,1,0,0\r\n\r\n  \r\n",
         [](const RipSettings& s) { return s.autoSelectAll == 1; }},
        {"strings are trimmed, line ends part fields too", L"\" D \"\n\" c:\\m \"\r\n0",
         [](const RipSettings& s) {
             return s.driveLetter == L"D" && s.outputFolder == L"c:\\m" && s.createProgram == 0;
         }},
    };
    for (const Case& c : cases)
        EXPECT_TRUE(c.holds(parseRipSettings(c.text, L"C:\\data"))) << c.what;
}

TEST_F(SettingsFiles, driveRootLosesItsBackslashOnTheWayOut)
{
    settings.outputFolder = L" d:\\ ";
    EXPECT_TRUE(ripSettingsText(settings).starts_with("\"\",\"d:\","));
}

TEST_F(SettingsFiles, encoderIsLookedForWhereNoneIsNamed)
{
    host.files.put(L"C:\\program files\\bladeenc\\bladeenc.exe", "");
    settings.encodeWanted = 0;
    readSettings();
    EXPECT_EQ(settings.encoderPath, L"c:\\program files\\bladeenc\\bladeenc.exe");
    EXPECT_EQ(settings.encodeWanted, 1);
    EXPECT_EQ(forms.cdriptab().Text3.text.get(), settings.encoderPath) << "a first run shows it on the setup page";

    host.files.put(L"C:\\CDTONQUAY\\lame.exe", "");
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"D\",\"c:\\m\",1,0,\"x\",0,0\r\n");
    readSettings();
    EXPECT_EQ(settings.encoderPath, L"C:\\CDTONQUAY\\lame.exe");
    EXPECT_EQ(settings.encodeWanted, 1);
    EXPECT_EQ(settings.deleteWav, 1);

    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "\"D\",\"c:\\m\",1,0,\"xy\",0,0\r\n");
    readSettings();
    EXPECT_EQ(settings.encoderPath, L"xy");
    EXPECT_EQ(settings.encodeWanted, 0);
}

TEST_F(SettingsFiles, unreadableAndHugeFilesCountAsEmptyAndLeaveALine)
{
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", std::string(3u << 20, '1'));
    readSettings();
    EXPECT_EQ(settings.bitrateIndex, 8);
    EXPECT_TRUE(host.log.says("acdset.ini"));
}

TEST_F(SettingsFiles, writingReplacesAReadOnlyFileAndPutsUpWithFailure)
{
    host.files.put(L"C:\\CDTONQUAY\\acdset.ini", "old");
    host.files.setReadOnly(L"C:\\CDTONQUAY\\acdset.ini");
    writeRipSettings(host.files, host.log, folders, settings);
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\acdset.ini"), ripSettingsText(settings));

    host.files.fail(test::FakeFileSystem::Operation::writeWhole, L"C:\\CDTONQUAY\\acdset.ini");
    settings.autoClose = 1;
    writeRipSettings(host.files, host.log, folders, settings);
    EXPECT_NE(host.files.contents(L"C:\\CDTONQUAY\\acdset.ini"), ripSettingsText(settings));
    EXPECT_TRUE(host.log.says("Write the settings"));
}

TEST_F(SettingsFiles, forcingTheEngineIsKeptForLaterStarts)
{
    RipPath path{1};
    settings.ripMethod = 2;
    ForceAltRipMode(host.files, host.log, folders, path, settings);
    EXPECT_EQ(path.ripEngineMode, 0);
    EXPECT_EQ(settings.ripMethod, 4);
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\riptype.ini"), "\"0\"\r\n");
}

TEST_F(SettingsFiles, suiteFilesAreReadByPosition)
{
    host.files.put(L"C:\\CDTONQUAY\\tqwin.ini", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,\" c:\\data \"");
    EXPECT_EQ(readDataFolder(host.files, host.log, folders), L"c:\\data");
    host.files.put(L"C:\\CDTONQUAY\\tqwin.ini", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,\"c:\"");
    EXPECT_EQ(readDataFolder(host.files, host.log, folders), L"C:\\CDTONQUAY\\datacd");

    std::wstring mixer;
    readMixerPath(host.files, host.log, folders, mixer);
    EXPECT_EQ(mixer, L"C:\\WINDOWS\\SYSTEM\\sndvol32.exe");
    host.files.put(L"C:\\CDTONQUAY\\TQWIN1.INI", "\"c:\\mix.exe\",1,2");
    readMixerPath(host.files, host.log, folders, mixer);
    EXPECT_EQ(mixer, L"c:\\mix.exe");

    DisplayFonts fonts;
    Theme theme;
    host.files.put(L"C:\\CDTONQUAY\\TQWIN3.INI",
                   "\"Sans\",10,1,0,0,255\n\"Mono\",8,0,0,0,\"128\"\n9,9,9,9,9,9\n\"LcdD\",24,0,0,0,65535\n1,2,3,4,5");
    readDisplayFonts(host.files, host.log, folders, fonts, theme);
    EXPECT_EQ(fonts.disc.name, L"Sans");
    EXPECT_EQ(fonts.status.colour, 128);
    EXPECT_EQ(fonts.track.size, 24);
    EXPECT_EQ(theme.panelColours[4], 5);
    EXPECT_EQ(theme.panelColours[5], 0) << "past the end of a short file";

    bool plain = false;
    host.files.put(L"C:\\CDTONQUAY\\TQWIN4.INI", "1,2,3,4,5,6,7,8,9,10,11,12,13,1,15,16,1,111,222,20,21,22,23");
    readTheme(host.files, host.log, folders, theme, plain);
    EXPECT_TRUE(plain);
    EXPECT_EQ(theme.highlight(), 111);
    EXPECT_EQ(theme.normal(), 222);

    WindowState window;
    host.files.put(L"C:\\CDTONQUAY\\TQWIN7.INI", "1,2,3,4,5,6,7,1,9,10,11,12,13,14,15,16,17,18,19,20,21,2,23,24");
    readWindowChoices(host.files, host.log, folders, window);
    EXPECT_EQ(window.keepWindowPlace, 1);
    EXPECT_EQ(window.keypadStyle, 2);
}

}
}
