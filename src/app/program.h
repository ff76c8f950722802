#pragma once

#include "deck/command_keys.h"
#include "deck/disc_watch.h"
#include "deck/popup_menu.h"
#include "deck/preview.h"
#include "deck/program_end.h"
#include "deck/run_commands.h"
#include "deck/shell.h"
#include "deck/start_up.h"
#include "disc/disc_table.h"
#include "disc/title_edit.h"
#include "encode/encoder_pipeline.h"
#include "engine/engine_form.h"
#include "platform/platform.h"
#include "rip/analog_capture.h"
#include "rip/control_progress.h"
#include "rip/partial_selection.h"
#include "rip/program_files.h"
#include "rip/rip_driver.h"
#include "rip/track_extraction.h"
#include "setup/setup_page.h"
#include "state/app_state.h"
#include "state/forms.h"
#include "tagging/automatic_tagger.h"
#include "tagging/late_tags.h"
#include "tagging/tag_page.h"

#include <functional>
#include <string_view>

namespace tonquay::app {

/// The whole program but its views: every form with its behaviour, each handed what it needs. Front ends bind views to
/// the forms, press their controls, and read the state; several programs may live side by side.
class Program {
public:
    /// `platform` and all it refers to outlive the program.
    explicit Program(platform::Platform platform);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Loads the main window: finds the program folder (the whole of `commandLine`, or the installation's), settings,
    /// disc and tracks. May end the program.
    void start(std::wstring_view commandLine);

    state::AppState& state() { return state_; }
    state::Forms& forms() { return forms_; }
    const tagging::LateTags& lateTags() const { return lateTags_; }

    /// Tells `follower` of each encoder that is started for one track; an empty one ends that.
    void followEncoders(std::function<void(const encode::StartedEncoder&)> follower);

private:
    void encoderStarted(const encode::StartedEncoder& encoder);

    platform::Platform platform_;
    state::AppState state_;
    state::Forms forms_;

    engine::EngineForm engine_;
    disc::DiscTable discTable_;
    disc::TitleEdit titleEdit_;
    setup::SetupPage setupPage_;
    rip::AnalogCapture analogCapture_;
    rip::ControlProgress controlProgress_;
    rip::PartialSelection partialSelection_;
    rip::ProgramFiles programFiles_;
    tagging::LateTags lateTags_;
    std::function<void(const encode::StartedEncoder&)> encoderFollower_;
    encode::EncoderPipeline encoders_;
    rip::TrackExtraction extraction_;
    rip::RipDriver driver_;
    tagging::AutomaticTagger tagger_;
    tagging::TagPage tagPage_;
    deck::ProgramEnd programEnd_;
    deck::Preview preview_;
    deck::RunCommands runCommands_;
    deck::CommandKeys commandKeys_;
    deck::DiscWatch discWatch_;
    deck::Shell shell_;
    deck::PopupMenu popupMenu_;
    deck::StartUp startUp_;
};

}
