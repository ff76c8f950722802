#pragma once

#include "disc/disc_table.h"
#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <string_view>

namespace tonquay::deck {

/// Everything between the start of the process and a main window that is ready to rip. Each step that the world
/// refuses leaves its values as they were, and the next one follows.
class StartUp {
public:
    StartUp(state::AppState& state, state::Forms& forms, disc::DiscTable& discTable, platform::Platform& platform)
        : state_(state),
          forms_(forms),
          main_(forms.ripdeck()),
          discTable_(discTable),
          platform_(platform)
    {}

    /// The whole command line is the program folder; without one the installation's is taken. Ends the program without
    /// a word when there is neither.
    void run(std::wstring_view commandLine);

private:
    void findProgramFolder(std::wstring_view commandLine);
    void findSystemFolders();
    void decideRipPath();
    void setUpDriveControl();
    void showPathControls();
    void clearFlags();
    void measureScreen();
    void changeToProgramFolder();
    void readSuiteFiles();
    void placeWindow();
    void takeOverDisc();
    void findDriveAndTracks();
    void handleMissingDrive();
    void leadToSetup();
    void rereadDoubtfulTable();
    void selectTracksOfPlayer();
    void startDiscWatch();

    bool noDrive() const;

    state::AppState& state_;
    state::Forms& forms_;
    state::RipdeckControls& main_;
    disc::DiscTable& discTable_;
    platform::Platform& platform_;
};

}
