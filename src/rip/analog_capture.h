#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"

namespace tonquay::rip {

/// The form cdrecalt, which records a track through the sound card. It cannot record yet: loading it ends the capture
/// at once, with a line and no file.
class AnalogCapture {
public:
    AnalogCapture(state::AppState& state, state::Forms& forms, platform::Platform& platform);
};

}
