#pragma once

#include "platform/dialogs.h"
#include "platform/platform.h"
#include "state/forms.h"
#include "state/settings.h"
#include "ui/forms/capture_window.h"
#include "ui/forms/engine_window.h"
#include "ui/forms/main_window.h"
#include "ui/forms/partial_window.h"
#include "ui/forms/popup_menu_view.h"
#include "ui/forms/setup_window.h"
#include "ui/forms/tagger_window.h"

#include <optional>

namespace tonquay::ui {

/// Every window of the desktop program, each bound to its form for as long as this lives. Made before the program
/// starts, so that whatever a form shows while it loads is seen.
class Windows {
public:
    Windows(state::Forms& forms, const state::Theme& theme, platform::Platform platform)
        : main_(forms.ripdeck(), theme),
          menu_(forms.controlsOf<state::PopaControls>()),
          tagger_(forms.controlsOf<state::Id3autoControls>()),
          partial_(forms.controlsOf<state::TrkcustControls>()),
          setup_(forms.controlsOf<state::CdriptabControls>(), platform.files, platform.dialogs),
          capture_(forms.controlsOf<state::CdrecaltControls>(), platform.files)
    {
        main_.mayEndRun = [dialogs = &platform.dialogs] {
            using Dialogs = platform::Dialogs;
            return dialogs->messageBox(L"CD-Tonquay", L"A run is under way. End the program in the middle of it?",
                                       Dialogs::Icon::question, Dialogs::Buttons::yesNo) == Dialogs::Answer::yes;
        };
    }

    MainWindow& main() { return main_; }

    /// Has the audio engine's own form on the screen too, which people never see. Before the program starts.
    void addEngineForm(state::Forms& forms) { engine_.emplace(forms.controlsOf<state::Cdrip1Controls>()); }

private:
    MainWindow main_;
    PopupMenuView menu_;
    TaggerWindow tagger_;
    PartialWindow partial_;
    SetupWindow setup_;
    CaptureWindow capture_;
    std::optional<EngineWindow> engine_;
};

}
