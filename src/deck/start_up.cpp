#include "deck/start_up.h"

#include "base/sequential.h"
#include "base/text.h"
#include "deck/window_place.h"
#include "disc/handover_file.h"
#include "platform/acd_control.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "platform/system_info.h"
#include "state/disc_display.h"
#include "state/painting.h"
#include "state/rip_settings_file.h"
#include "state/settings_text.h"
#include "state/suite_files.h"

namespace tonquay::deck {

namespace {

constexpr std::wstring_view playerTracksName = L"pgmtrks.tmp";

void applyFont(controls::Label& label, const state::DisplayFont& font, const state::Theme& theme)
{
    if (!base::isBlank(font.name)) {
        label.fontName = font.name;
        label.fontSize = font.size;
        label.colour = font.colour;
    }
    if (theme.useThemeColours == 1)
        label.colour = theme.themeColourA;
}

}

void StartUp::run(std::wstring_view commandLine)
{
    findProgramFolder(commandLine);
    findSystemFolders();
    decideRipPath();
    if (state_.path.ripEngineMode == 1)
        setUpDriveControl();
    showPathControls();
    clearFlags();
    measureScreen();
    changeToProgramFolder();
    readSuiteFiles();
    placeWindow();
    takeOverDisc();
    state::racdset(platform_.files, platform_.log, state_.folders, forms_, state_.settings);
    findDriveAndTracks();
    handleMissingDrive();
    rereadDoubtfulTable();
    state_.flags.encodeOnly = 0;
    state_.flags.stopRequested = 0;
    state_.flags.ripBusy = 0;
    selectTracksOfPlayer();
    startDiscWatch();
    if (state_.settings.autoSelectAll == 1)
        disc::selalltrks(main_.list1);
    state::setborder(main_, state_.theme);
}

void StartUp::findProgramFolder(std::wstring_view commandLine)
{
    std::wstring folder(base::trim(commandLine));
    if (folder.empty()) {
        folder = platform_.system.installPath();
        folder.resize(std::min(folder.find(L'\0'), folder.size()));
        folder = base::trim(folder);
    }
    if (folder.empty())
        platform_.processes.endProgram();
    state_.folders.appFolder = folder;
}

void StartUp::findSystemFolders()
{
    state_.folders.windowsFolder = base::upper(platform_.system.windowsFolder());
    state_.folders.systemFolder = base::upper(platform_.system.systemFolder());
    state_.folders.dataFolder = state::readDataFolder(platform_.files, platform_.log, state_.folders);
}

void StartUp::decideRipPath()
{
    const auto stored = state::readRipType(platform_.files, platform_.log, state_.folders);
    state_.path.ripEngineMode = stored.value_or(0);
    if (!stored)
        state::writeRipType(platform_.files, platform_.log, state_.folders, 0);
    if (state_.path.ripEngineMode == 0)
        state_.settings.ripMethod = state::engineMethod;
}

void StartUp::setUpDriveControl()
{
    const auto probed = platform_.acd.Probe();
    if (passOver(platform_.log, probed, "Read the drive")) {
        state_.engine.acdResult = *probed;
        main_.Totalprogress.value = std::int16_t{0};
        main_.Trackprogress.value = std::int16_t{0};
        platform_.acd.SelectDrive(1);
        return;
    }
    platform_.dialogs.messageBox(L"CD-Tonquay",
                                 L"Unable to read data from CD drive, check manufacturer support site online for "
                                 L"possible firmware update. Switching to use alternate digital rip method.",
                                 platform::Dialogs::Icon::stop);
    state::ForceAltRipMode(platform_.files, platform_.log, state_.folders, state_.path, state_.settings);
}

void StartUp::showPathControls()
{
    const bool engine = state_.path.ripEngineMode != 1;
    main_.lblTrackTime.visible = engine;
    main_.lblTrackTot.visible = engine;
    main_.SSPanel1.visible = engine;
}

void StartUp::clearFlags()
{
    state_.flags.previewActive = 0;
    state_.window.discWasRemoved = 0;
    state_.flags.encodeBusy = 0;
    state_.flags.autoTagBusy = 0;
    state_.flags.autoTagMode = 0;
    state_.partial.partialStartMs.clear();
    state_.partial.partialEndMs.clear();
    state_.partial.partialLengthMs.clear();
}

void StartUp::measureScreen()
{
    constexpr std::int32_t largeFontTwips = 14;
    state_.window.smallFonts = platform_.system.screen().twipsPerPixel > largeFontTwips ? 1 : 0;
}

void StartUp::changeToProgramFolder()
{
    const std::wstring& folder = state_.folders.appFolder;
    passOver(platform_.log, platform_.files.changeDrive(folder), "Change to the program folder's drive");
    passOver(platform_.log, platform_.files.changeFolder(folder), "Change to the program folder");
}

void StartUp::readSuiteFiles()
{
    state::readMixerPath(platform_.files, platform_.log, state_.folders, state_.window.mixerPath);
    state::DisplayFonts fonts;
    state::readDisplayFonts(platform_.files, platform_.log, state_.folders, fonts, state_.theme);
    bool plainTrackFont = false;
    state::readTheme(platform_.files, platform_.log, state_.folders, state_.theme, plainTrackFont);
    state::readWindowChoices(platform_.files, platform_.log, state_.folders, state_.window);

    applyFont(main_.Label12, fonts.disc, state_.theme);
    applyFont(main_.Label13, fonts.disc, state_.theme);
    for (controls::Label& label : main_.Label6)
        applyFont(label, fonts.status, state_.theme);
    applyFont(main_.Label8, fonts.track, state_.theme);
    if (plainTrackFont || main_.Label8.fontName.get() != L"LcdD")
        main_.Label8.fontName = L"Arial";
    state::sbarbc(main_, state_.theme);
}

void StartUp::placeWindow()
{
    const auto screen = platform_.system.screen();
    if (!state::readWindowPlace(platform_.files, platform_.log, state_.folders, state_.window)) {
        centerOnScreen(main_.form, screen);
        return;
    }
    if (state_.window.keepWindowPlace == 1)
        return;
    clampPlace(state_.window, main_.form, screen);
    main_.form.left = state_.window.savedLeft;
    main_.form.top = state_.window.savedTop;
}

void StartUp::takeOverDisc()
{
    state::DiscInfo& disc = state_.disc;
    const std::wstring handOver = state::inFolder(state_.folders.appFolder, disc::handoverName);
    if (disc::readHandover(platform_.files, platform_.log, handOver, disc)) {
        state::showDiscNames(main_, disc);
        state::placeTitle(main_);
        passOver(platform_.log, platform_.files.remove(handOver), "Delete the hand-over file");
    }
    disc::applyUnknownDiscNames(disc);
    state::showDiscTags(main_, disc);
}

void StartUp::findDriveAndTracks()
{
    if (state_.path.ripEngineMode == 1)
        discTable_.buildFromControl();
    else
        discTable_.buildFromEngine();
}

bool StartUp::noDrive() const
{
    return base::isBlank(state_.settings.driveLetter);
}

void StartUp::handleMissingDrive()
{
    if (noDrive()) {
        if (state_.settings.ripMethod < state::analogMethod)
            leadToSetup();
        else if (state_.settings.ripMethod <= state::engineMethod)
            discTable_.analogtrks();
    }
    if (noDrive() && state_.settings.ripMethod < state::analogMethod)
        platform_.dialogs.messageBox(L"CD-Tonquay", L"Please select a CD/DVD Drive in the CD Ripper Setup Section!",
                                     platform::Dialogs::Icon::exclamation);
}

void StartUp::leadToSetup()
{
    platform_.dialogs.messageBox(L"CD-Tonquay Setup Wizard",
                                 L"You must enter your default CD-ROM, DVD or CD-R drive in the following settings "
                                 L"section before using the CD Ripper for the first time!",
                                 platform::Dialogs::Icon::information);
    main_.form.windowState = controls::Form::WindowState::minimised;
    state_.settings.ripMethod = state::burstMethod;
    forms_.cdriptab().List4.setIndex(state::burstMethod);
    forms_.cdripbg().form.show();
    forms_.cdriptab().form.show();
    forms_.cdriptab().tab = state::settingsTab;
    main_.form.enabled = false;
}

void StartUp::rereadDoubtfulTable()
{
    // Two tracks in a row that short are more likely a table that the drive gave too early.
    constexpr std::int32_t shortest = 10;
    const state::DiscInfo& disc = state_.disc;
    if (noDrive() || disc.trackSeconds(1) >= shortest || disc.trackSeconds(2) >= shortest)
        return;
    state_.engine.pendingDriveLetter = state_.settings.driveLetter;
    discTable_.select_drive();
}

void StartUp::selectTracksOfPlayer()
{
    const std::wstring path = state::inFolder(state_.folders.appFolder, playerTracksName);
    if (!platform_.files.fileExists(path))
        return;
    if (const auto text = state::settingsText(platform_.files, platform_.log, path)) {
        base::SequentialReader reader(*text);
        while (!reader.atEnd()) {
            std::int16_t number = 0;
            reader.read(number);
            if (number > 0)
                main_.list1.select(number - 1, true);
        }
    }
    passOver(platform_.log, platform_.files.remove(path), "Delete the player's track list");
}

void StartUp::startDiscWatch()
{
    if (platform_.files.fileExists(disc::firstTrackName(state_.disc.handoverDriveLetter)))
        main_.Timer1.setEnabled(true);
}

}
