#pragma once

#include "disc/disc_table.h"
#include "platform/platform.h"
#include "setup/drive_list.h"
#include "setup/encoder_box.h"
#include "setup/format_ticks.h"
#include "setup/mp3_to_wav.h"
#include "setup/output_folder.h"
#include "setup/page_choices.h"
#include "setup/setup_state.h"
#include "state/app_state.h"
#include "state/forms.h"

#include <functional>

namespace tonquay::setup {

/// The setup dialog. It shows the settings when it loads. Some controls change their setting at once, for this run; OK
/// takes the others, writes all of them, and restarts the program when the way of reading has changed with them.
class SetupPage {
public:
    /// `loadTagPage` fills the page of tags, which is somebody else's, when the dialog loads.
    SetupPage(state::AppState& state, state::Forms& forms, disc::DiscTable& discTable, platform::Platform& platform,
              std::function<void()> loadTagPage = {});

private:
    void load();
    void showEncoder();
    void testProcessor();
    void accept();
    bool lacksEncoder(state::FileFormat format, std::wstring_view complaint);
    void restart();
    void close();
    void keyPressed(controls::Key key);

    state::AppState& state_;
    state::Forms& forms_;
    state::CdriptabControls& form_;
    disc::DiscTable& discTable_;
    platform::Platform& platform_;
    std::function<void()> loadTagPage_;
    SetupState page_;
    DriveList drives_;
    OutputFolder outputFolder_;
    EncoderBox encoder_;
    FormatTicks formats_;
    PageChoices choices_;
    Mp3ToWav toWav_;
};

}
