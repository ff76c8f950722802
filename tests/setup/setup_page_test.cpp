#include "base/text.h"
#include "setup_harness.h"
#include "state/help.h"
#include "state/rip_settings_file.h"

#include <gmock/gmock.h>

namespace tonquay::setup {
namespace {

using testing::HasSubstr;

TEST_F(Setup, openingAndOkChangesNoSetting)
{
    struct Case {
        const char* name;
        std::int16_t ripEngineMode;
        const char* settings;
    };
    const Case cases[]{
        {"defaults of the control path", 1,
         R"("D","C:\m",1,0,"C:\CDTONQUAY\lame.exe",1,1,0,0,1,8,"","",2,"2",0,0,1,0,0,1,0)"},
        {"every field another way", 1,
         R"("D","C:\m\n",0,6,"C:\x\my lame.exe",1,0,1,1,0,13,"--preset x","mpg",1,"1",1,7,0,0,1,0,1)"},
        {"WAV only, no folders", 1, R"("D","C:\m",1,3,"C:\b\bladeenc.exe",0,0,0,1,1,0,"","",0,"0",1,0,1,0,0,1,0)"},
        {"an Ogg encoder of the user's own", 1,
         R"("D","C:\m",1,3,"C:\y\oggenc-fast",1,1,0,0,1,10,"","",0,"0",1,0,1,0,0,1,0)"},
        {"an Ogg encoder, flag as the page writes it", 1,
         R"("D","C:\m",1,3,"C:\CDTONQUAY\oggtools\oggenc.exe",0,1,0,0,1,10,"","",0,"0",1,0,1,0,0,1,0)"},
        {"the audio engine", 0, R"("D","C:\m",1,0,"C:\CDTONQUAY\lame.exe",1,1,0,0,1,8,"","",4,"2",0,0,1,0,0,1,0)"},
        {"WMA", 0, R"("D","C:\m",1,0,"",0,1,0,0,1,8,"","",4,"2",0,0,1,1,0,1,0)"},
        {"Turbo that its schedule does not have", 0,
         R"("D","C:\m",1,0,"C:\CDTONQUAY\lame.exe",1,1,0,0,1,8,"","",4,"2",0,0,1,0,1,1,0)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        host.files.put(L"C:\\CDTONQUAY\\acdset.ini", std::string(c.settings) + "\r\n");
        settings = state::parseRipSettings(base::fromFileBytes(c.settings), L"C:\\data");
        state.path.ripEngineMode = c.ripEngineMode;
        const std::string before = state::ripSettingsText(settings);
        open();
        form.cmdOK.press();
        EXPECT_FALSE(form.form.isLoaded()) << base::utf8(told());
        EXPECT_EQ(written(L"acdset.ini"), before);
        EXPECT_EQ(state::ripSettingsText(settings), before);
        EXPECT_EQ(written(L"riptype.ini"), c.ripEngineMode == 1 ? "\"1\"\r\n" : "\"0\"\r\n");
    }
}

TEST_F(Setup, everyControlReachesItsFieldWhenItShould)
{
    struct Case {
        const char* name;
        std::function<void()> act;
        std::string atOnce; ///< the field's value then
        std::string saved;  ///< after OK
        std::function<std::string()> field;
    };
    const auto number = [](std::int16_t& field) { return [&field] { return std::to_string(field); }; };
    const auto text = [](std::wstring& field) { return [&field] { return base::utf8(field); }; };
    settings.encodeSingle = 0;
    settings.dirMode = 2;
    const Case cases[]{
        {"folder", [&] { form.dir1.open(L"C:\\Other"); }, "C:\\Other", "C:\\Other", text(settings.outputFolder)},
        {"drive of the folder",
         [&] {
             form.Drive1.drive = L"E:";
             form.Drive1.change();
         },
         "E:\\", "E:", text(settings.outputFolder)},
        {"program file", [&] { form.Check1.setValue(0); }, "0", "0", number(settings.createProgram)},
        {"names", [&] { form.Option1.choose(5); }, "5", "5", number(settings.nameFormat)},
        {"typed encoder", [&] { form.Text3.text = L"C:\\typed"; }, "C:\\CDTONQUAY\\lame.exe", "C:\\CDTONQUAY\\lame.exe",
         text(settings.encoderPath)},
        {"keep WAV", [&] { tick(form.riptofile[state::wavFormat]); }, "1", "0", number(settings.deleteWav)},
        {"CRC", [&] { form.Check4.setValue(1); }, "1", "1", number(settings.crcCheck)},
        {"VBR", [&] { form.Check5.setValue(1); }, "1", "1", number(settings.highPriority)},
        {"mono", [&] { form.Option2.choose(0); }, "0", "0", number(settings.stereo)},
        {"bitrate", [&] { form.Option3.choose(13); }, "13", "13", number(settings.bitrateIndex)},
        {"switches without Enter",
         [&] {
             form.Check6.setValue(1);
             form.Text1.text = L"-V 2";
         },
         "", "-V 2", text(settings.encoderCmdLine)},
        {"extension without Enter",
         [&] {
             form.Check7.setValue(1);
             form.Text2.text = L"mpg";
         },
         "", "mpg", text(settings.encoderFileExt)},
        {"rip mode", [&] { form.List4.setIndex(1); }, "1", "1", number(settings.ripMethod)},
        {"folders of artists", [&] { form.Check8.setValue(1); }, "1", "1", number(settings.dirMode)},
        {"no folders", [&] { form.Check8.setValue(0); }, "1", "0", number(settings.dirMode)},
        {"folders of albums", [&] { form.Check9.setValue(1); }, "2", "2", number(settings.dirMode)},
        {"single", [&] { form.Option4.choose(1); }, "0", "1", number(settings.encodeSingle)},
        {"turbo", [&] { form.Check2.setValue(1); }, "0", "1", number(settings.turboMode)},
        {"quality without Enter", [&] { form.Text11.text = L"12"; }, "0", "12", number(settings.vbrQuality)},
        {"minimise", [&] { form.Check12.setValue(0); }, "1", "0", number(settings.minimizeWhileEncoding)},
        {"select all", [&] { form.Check3.setValue(0); }, "0", "0", number(settings.autoSelectAll)},
        {"auto close", [&] { form.Check13.setValue(1); }, "1", "1", number(settings.autoClose)},
        {"no MP3", [&] { tick(form.riptofile[state::mp3Format], false); }, "1", "0", number(settings.encodeWanted)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        open();
        c.act();
        EXPECT_EQ(c.field(), c.atOnce);
        form.cmdOK.press();
        EXPECT_EQ(c.field(), c.saved);
        EXPECT_FALSE(form.form.isLoaded()) << base::utf8(told());
    }
    EXPECT_EQ(written(L"acdset.ini"),
              R"("D","E:",0,5,"C:\CDTONQUAY\lame.exe",0,0,1,1,0,13,"-V 2","mpg",1,"2",1,12,0,0,1,0,1)"
              "\r\n");
}

TEST_F(Setup, cancelKeepsWhatWasSetAtOnceAndWritesNothing)
{
    forms.ripdeck().form.enabled = false;
    open();
    form.Option1.choose(6);
    form.Check12.setValue(0);
    form.cmdCancel.press();
    EXPECT_EQ(settings.nameFormat, 6);
    EXPECT_EQ(settings.minimizeWhileEncoding, 1);
    EXPECT_EQ(settings.bitrateIndex, 8) << "controls that go back to their design change nothing";
    EXPECT_EQ(written(L"acdset.ini"), "missing");
    EXPECT_TRUE(forms.ripdeck().form.enabled);
    EXPECT_FALSE(form.form.isLoaded());
}

TEST_F(Setup, okRefusesWhatCannotWork)
{
    open();
    form.Text3.text = L" ";
    form.cmdOK.press();
    EXPECT_EQ(told(), L"CD-Tonquay: Please select a MP3 encoder above!\n");
    EXPECT_EQ(form.focusWanted.get(), state::SetupFocus::encoder);
    EXPECT_EQ(written(L"acdset.ini"), "missing");

    takeAway(L"C:\\CDTONQUAY\\oggtools\\oggenc.exe");
    tick(form.riptofile[state::oggFormat]);
    EXPECT_EQ(form.Text3.text.get(), L"");
    form.cmdOK.press();
    EXPECT_EQ(told(), L"CD-Tonquay: Please select an OGG encoder above!\n");

    tick(form.riptofile[state::oggFormat], false);
    tick(form.riptofile[state::wavFormat]);
    settings.driveLetter = L" ";
    form.cmdOK.press();
    EXPECT_EQ(told(), L"CD-Tonquay: Please select a CD-ROM/DVD drive above!\n");
    EXPECT_EQ(form.focusWanted.get(), state::SetupFocus::drives);
    EXPECT_NE(written(L"acdset.ini"), "missing") << "the settings have been saved by then";
    EXPECT_TRUE(form.form.isLoaded());
}

TEST_F(Setup, changedWayOfReadingRestartsTheProgram)
{
    const auto restarts = [this](std::int16_t mode, const std::function<void()>& act) {
        state.path.ripEngineMode = mode;
        settings.ripMethod = mode == 0 ? 4 : 0;
        settings.ripToWma = 0;
        open();
        act();
        EXPECT_THROW(form.cmdOK.press(), test::ProgramEnded);
        EXPECT_EQ(told(), L"CD-Tonquay: Restarting CD Ripper with new rip method\n");
        EXPECT_EQ(host.processes.started.back().command, L"C:\\CDTONQUAY\\Tqlaunch.exe RUNRIPPER");
        form.form.unload();
        return written(L"riptype.ini");
    };
    EXPECT_EQ(restarts(1, [&] { form.List4.setIndex(4); }), "\"0\"\r\n");
    EXPECT_EQ(restarts(0, [&] { form.List4.setIndex(0); }), "\"1\"\r\n");
    EXPECT_EQ(restarts(1, [&] { tick(form.riptofile[state::wmaFormat]); }), "\"0\"\r\n")
        << "the audio engine alone has WMA";
    EXPECT_EQ(settings.ripMethod, 4);
}

TEST_F(Setup, analogCaptureNeedsNoDriveAndBuildsItsOwnTable)
{
    settings.driveLetter.clear();
    settings.ripMethod = 3;
    state.disc.trackCount = 2;
    open();
    form.cmdOK.press();
    EXPECT_EQ(told(), L"");
    EXPECT_EQ(forms.ripdeck().list1.rowCount(), 2);
}

TEST_F(Setup, driveIsChosenForEachWayOfReading)
{
    host.acd.drives = {{L"D", {60000}}, {L"E", {60000, 70000}}};
    open();
    EXPECT_EQ(form.List2.rowCount(), 2);
    EXPECT_EQ(form.List3.row(0).text, L"D");
    form.List2.setIndex(1);
    form.List2.doubleClick();
    EXPECT_EQ(settings.driveLetter, L"E");
    EXPECT_EQ(forms.ripdeck().list1.rowCount(), 2);
    EXPECT_EQ(form.List3.row(0).text, L"E");
    form.cmdCancel.press();

    state.path.ripEngineMode = 0;
    engineDrives = {L"D: Maker Model 1.0", L"E: Maker Model 1.0"};
    open();
    EXPECT_EQ(settings.ripMethod, 4);
    EXPECT_EQ(form.List3.row(0).text.substr(0, 2), L"E:");
    EXPECT_EQ(state.engine.selectedDriveIndex, 1);
    form.List2.setIndex(0);
    form.List2.doubleClick();
    EXPECT_EQ(settings.driveLetter, L"D");
    EXPECT_EQ(forms.cdrip1().cmbCDDrives.index(), 0);
    EXPECT_EQ(told(), L"");
}

TEST_F(Setup, controlWithoutDrivesTellsWhatMayBeMissing)
{
    host.acd.drives.clear();
    open();
    EXPECT_THAT(base::utf8(told()),
                testing::AllOf(HasSubstr("CD-Tonquay: Drive detection error, ASPI manager not loaded "
                                         "onto your system!\n\n"),
                               HasSubstr("cdrom")));
    form.cmdCancel.press();
    settings.ripMethod = 4;
    engineDrives.clear();
    open();
    EXPECT_EQ(told(), L"") << "that is for the control only";
    EXPECT_EQ(state.path.ripEngineMode, 0);
}

TEST_F(Setup, ticksOfFormatsBringTheirEncoders)
{
    open();
    tick(form.riptofile[state::oggFormat]);
    EXPECT_EQ(form.riptofile[state::mp3Format].value(), 0);
    EXPECT_EQ(form.Text3.text.get(), L"C:\\CDTONQUAY\\oggtools\\oggenc.exe");
    EXPECT_EQ(form.SSFrame1.caption.get(), L"Encoding Quality (0=lowest, 10=highest)");
    EXPECT_EQ(form.Option3[10].caption.get(), L" 10");
    EXPECT_FALSE(form.Option3[11].visible);
    EXPECT_FALSE(form.Option2[0].enabled);

    tick(form.riptofile[state::wmaFormat]);
    EXPECT_EQ(form.riptofile[state::oggFormat].value(), 0);
    EXPECT_EQ(form.Text3.text.get(), L"");
    EXPECT_EQ(form.Option3[10].caption.get(), L"192,000 bps");

    tick(form.riptofile[state::wavFormat]);
    EXPECT_EQ(form.riptofile[state::wmaFormat].value(), 0);

    tick(form.riptofile[state::mp3Format]);
    EXPECT_EQ(form.riptofile[state::wavFormat].value(), 1) << "the WAV may be kept beside it";
    EXPECT_EQ(form.Text3.text.get(), L"C:\\CDTONQUAY\\lame.exe");
    EXPECT_EQ(form.Check5.caption.get(), L"Enable VBR Encoding");
    EXPECT_TRUE(form.Option2[0].enabled);
    takeAway(L"C:\\CDTONQUAY\\lame.exe");
    host.files.put(L"C:\\CDTONQUAY\\bladeenc.exe", "program");
    tick(form.riptofile[state::mp3Format]);
    EXPECT_EQ(form.Text3.text.get(), L"C:\\CDTONQUAY\\bladeenc.exe");
    EXPECT_EQ(form.Check5.caption.get(), L"Enable high priority encoding");
    form.cmdOK.press();
    EXPECT_EQ(settings.encoderPath, L"C:\\CDTONQUAY\\bladeenc.exe") << "a tick's encoder is saved";
}

TEST_F(Setup, processorOfACertainKindHasAnOggEncoderOfItsOwn)
{
    host.system.processor = L"Intel(R) Pentium(R) 4 CPU 2.40GHz ";
    host.files.put(L"C:\\CDTONQUAY\\oggtools\\oggencp4.exe", "program");
    open();
    EXPECT_TRUE(form.Label13.visible);
    tick(form.riptofile[state::oggFormat]);
    EXPECT_EQ(form.Text3.text.get(), L"C:\\CDTONQUAY\\oggtools\\oggencp4.exe");
    form.Label12.doubleClick();
    ASSERT_EQ(host.dialogs.questions.size(), 1U);
    EXPECT_EQ(host.dialogs.questions[0].fileName, L"oggencp4.exe");
    EXPECT_EQ(host.dialogs.questions[0].folder, L"C:\\CDTONQUAY\\oggtools");
    EXPECT_EQ(host.dialogs.questions[0].title, L"Select Ogg Encoder Application");
    form.cmdCancel.press();
    host.system.processor = L"";
    open();
    EXPECT_FALSE(form.Label13.visible);
}

TEST_F(Setup, encoderIsChosenByFileDialog)
{
    open();
    tick(form.riptofile[state::wmaFormat]);
    form.Label12.doubleClick();
    tick(form.riptofile[state::wavFormat]);
    form.Label12.doubleClick();
    EXPECT_EQ(told(), L"CD-Tonquay: External encoder not required for WMA files\n"
                      L"CD-Tonquay: External encoder not required for WAV files\n");
    EXPECT_TRUE(host.dialogs.questions.empty());

    tick(form.riptofile[state::mp3Format]);
    host.files.put(L"C:\\enc\\bladeenc.exe", "program");
    host.dialogs.chosenFiles = {std::nullopt, L"C:\\enc\\gone.exe", L"C:\\enc\\bladeenc.exe"};
    form.Label12.doubleClick();
    EXPECT_EQ(form.Text3.text.get(), L"C:\\CDTONQUAY\\lame.exe") << "cancelled";
    form.Label12.doubleClick();
    EXPECT_EQ(form.Text3.text.get(), L"C:\\enc\\gone.exe");
    EXPECT_EQ(settings.encoderPath, L"C:\\CDTONQUAY\\lame.exe") << "it is not there";
    form.Label12.doubleClick();
    EXPECT_EQ(settings.encoderPath, L"C:\\enc\\bladeenc.exe");
    EXPECT_EQ(form.Check5.value(), 1);
    EXPECT_FALSE(form.Text11.visible);
    tick(form.riptofile[state::mp3Format]);
    EXPECT_EQ(form.Text3.text.get(), L"C:\\enc\\bladeenc.exe") << "the next tick leaves what was just chosen";
    tick(form.riptofile[state::mp3Format]);
    EXPECT_EQ(form.Text3.text.get(), L"C:\\CDTONQUAY\\lame.exe") << "once";
}

TEST_F(Setup, typedEncoderCountsWithEnter)
{
    host.files.put(L"C:\\other\\enc.exe", "program");
    open();
    form.Text3.text = L"C:\\nowhere\\enc.exe";
    form.Text3.enter();
    EXPECT_EQ(told(), L"CD-Tonquay: MP3 Encoder File:  C:\\nowhere\\enc.exe  Not Found!\n");
    form.Text3.text = L"C:\\other\\enc.exe";
    form.Text3.enter();
    EXPECT_EQ(settings.encoderPath, L"C:\\other\\enc.exe");
    EXPECT_FALSE(form.Label17.visible);
    form.Text3.text = L"  ";
    form.Text3.enter();
    EXPECT_FALSE(form.Option3[0].enabled);
    EXPECT_FALSE(form.SSFrame1.enabled);
}

TEST_F(Setup, switchesOfTheUsersOwnReplaceTheChoices)
{
    open();
    form.Check6.setValue(1);
    EXPECT_TRUE(form.Text1.enabled);
    EXPECT_FALSE(form.Check4.enabled);
    EXPECT_EQ(form.focusWanted.get(), state::SetupFocus::commandLine);
    form.Text1.text = L"-V 2";
    form.Text1.enter();
    EXPECT_EQ(settings.encoderCmdLine, L"-V 2");
    EXPECT_EQ(form.focusWanted.get(), state::SetupFocus::advanced);
    form.Text1.text = L"";
    form.Text1.enter();
    EXPECT_EQ(settings.encoderCmdLine, L"");
    EXPECT_EQ(form.Check6.value(), 0);
    EXPECT_TRUE(form.Check4.enabled);
    EXPECT_FALSE(form.Text1.enabled);

    form.Check7.setValue(1);
    form.Text2.text = L" ";
    form.Text2.enter();
    EXPECT_EQ(form.Text2.text.get(), L"MP3");
    EXPECT_EQ(form.Check7.value(), 0);
}

TEST_F(Setup, qualityOutOfRangeIsToldAndKept)
{
    open();
    EXPECT_EQ(form.Text11.text.get(), L"0");
    form.Text11.text = L"10";
    form.Text11.enter();
    EXPECT_EQ(told(), L"CD-Tonquay: Please select a VBR quality setting between 0 (highest quality) and 9 (lowest "
                      L"quality)!\n");
    EXPECT_EQ(settings.vbrQuality, 10);
    EXPECT_EQ(form.focusWanted.get(), state::SetupFocus::quality);
    form.Text11.text = L"9";
    form.Text11.enter();
    EXPECT_EQ(told(), L"");
    form.Label17.doubleClick();
    EXPECT_EQ(told(), L"CD-Tonquay: 0=highest quality / biggest file size, 9=lowest quality / smallest file size\n");
}

TEST_F(Setup, turboGoesWithSingleOnlyAndAdvancedFlips)
{
    settings.turboMode = 1;
    settings.encodeSingle = 1;
    open();
    EXPECT_EQ(form.Check2.value(), 1);
    form.Option4.choose(0);
    EXPECT_FALSE(form.Check2.enabled);
    EXPECT_EQ(form.Check2.value(), 0);
    form.Option4.choose(1);
    EXPECT_EQ(form.Check2.value(), 1);

    form.Command12.press();
    EXPECT_TRUE(form.SSFrame4.visible);
    EXPECT_FALSE(form.SSFrame1.visible);
    EXPECT_EQ(form.Command12.caption.get(), L"< Basic");
    form.Command12.press();
    EXPECT_TRUE(form.SSFrame1.visible);
    EXPECT_EQ(form.Command12.caption.get(), L"Advanced >");
}

TEST_F(Setup, keysOfTheDialog)
{
    open();
    form.form.keyDown(controls::Key::f1);
    form.tab = state::toWavTab;
    form.form.keyDown(controls::Key::f1);
    ASSERT_EQ(host.help.shown.size(), 2U);
    EXPECT_EQ(host.help.shown[0].second, state::setupTopic);
    EXPECT_EQ(host.help.shown[1].second, state::toWavTopic);
    form.form.keyDown(controls::Key::escape);
    EXPECT_FALSE(form.form.isLoaded());
}

}
}
