#pragma once

#include "platform/dialogs.h"
#include "platform/platform.h"
#include "setup/setup_state.h"
#include "state/app_state.h"
#include "state/cdriptab_controls.h"

#include <string>

namespace tonquay::setup {

/// Which encoder is used, and what it is told beside the choices of the page: the encoder's box, its file dialog, the
/// box of switches and the box of the file extension, the quality of variable bitrate.
class EncoderBox {
public:
    EncoderBox(state::AppState& state, state::CdriptabControls& form, SetupState& page, platform::Platform& platform);

    /// What goes with the name of an encoder: the caption of one box, and the quality, which LAME alone has.
    void followName(const std::wstring& encoder);

    /// What a command line of the user's own replaces.
    void mp3enabled();
    void mp3disabled();

private:
    void chooseByDialog();
    void enterPath();
    void switchesTicked();
    void extensionTicked();
    void enterSwitches();
    void enterExtension();
    void enterQuality();
    void setMp3Enabled(bool enabled);
    void take(const std::wstring& encoder);
    void tell(std::wstring_view text, platform::Dialogs::Icon icon) const;

    state::AppState& state_;
    state::CdriptabControls& form_;
    SetupState& page_;
    platform::Platform& platform_;
};

}
