#pragma once

#include "encode/encoder_kind.h"
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

/// What follows the program's path in the command: every switch and file argument, each with its leading blank. All of
/// them are built from the settings here, in the fixed order of the encoder's kind.
std::wstring builtArguments(EncoderKind kind, const Job& job);

/// The same in the user's own form: his switches as they are, the WAV file, and the MP3 file for a program whose path
/// has LAME anywhere in it, whatever kind it is.
std::wstring ownArguments(const Job& job);

}
