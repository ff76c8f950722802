#pragma once

#include <cstdint>
#include <string>

namespace tonquay::setup {

/// What the parts of the settings page share while it is open.
struct SetupState {
    /// The encoder that a save stores: the one at load, or what a tick, the file dialog or the Enter key has put there
    /// since. What was only typed is not.
    std::wstring chosenEncoder;

    bool formatsAsLoaded = true;      ///< nobody has acted on the ticks of the formats since
    std::int16_t pentiumDetected = 0; ///< 1: the processor calls itself one
    std::int16_t keepEncoderPath = 0; ///< 1: the next tick of a format leaves the encoder alone
};

}
