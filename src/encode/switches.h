#pragma once

#include "state/disc_info.h"
#include "state/run_flags.h"
#include "state/settings.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::encode {

/// Whether a command is for one track right after its extraction, or part of a batch after all extractions.
enum class Schedule { single, batch };

/// All that switches and file arguments are made from.
struct Job {
    const state::RipSettings& settings;
    const state::DiscInfo& disc;
    const state::RunInHand& run;
    std::int32_t number; ///< of the track, from 1
    Schedule schedule;
    std::wstring_view keptWavList{}; ///< for the kind that takes a batch in one command
};

/// What follows the program's path in the command: every switch and file argument, each with its leading blank, in the
/// fixed order of the encoder's kind, or of the user's own form.
std::wstring arguments(const Job& job);

}
