#include "rip/analog_capture.h"

#include "platform/diagnostics.h"

namespace tonquay::rip {

AnalogCapture::AnalogCapture(state::AppState& state, state::Forms& forms, platform::Platform& platform)
{
    forms.controlsOf<state::CdrecaltControls>().form.onLoad = [&state, &platform] {
        if (state.flags.analogBusy != 1)
            return;
        platform.log.line("analog", "Analog capture is not there yet; the track is left out");
        state.flags.analogBusy = 0;
    };
}

}
