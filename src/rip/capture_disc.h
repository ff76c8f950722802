#pragma once

#include "platform/mci.h"
#include "state/app_state.h"
#include "state/cdrecalt_controls.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::rip {

/// The text that a device answers to a command; empty when the command fails.
std::wstring answerTo(platform::Mci& mci, std::wstring_view command);

/// The disc as the capture form knows it: its tracks in the list, and their lengths.
class CaptureDisc {
public:
    CaptureDisc(state::AppState& state, state::CdrecaltControls& form, platform::Mci& mci)
        : state_(state),
          form_(form),
          mci_(mci)
    {}

    /// Empties both lists and reads the disc anew. Without a disc the lists stay empty, and lengths as they were.
    void refresh();

    void forget() { trackLengthsMs.clear(); }

    std::int32_t trackCount() const; ///< as the form shows it
    bool hasTrack(std::int32_t number) const;
    /// Milliseconds; 0 for a track that the disc does not have.
    std::int32_t lengthMs(std::int32_t number) const;

private:
    void listTracks(std::int32_t count);
    void readLengths(std::int32_t count);

    state::AppState& state_;
    state::CdrecaltControls& form_;
    platform::Mci& mci_;
    std::vector<std::int32_t> trackLengthsMs; ///< the first track's at 0
};

}
