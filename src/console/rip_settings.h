#pragma once

#include "base/result.h"
#include "console/options.h"
#include "state/settings.h"

#include <string>

namespace tonquay::console {

/// Where a run writes and what it encodes with, both in the program's form.
struct RunPlaces {
    std::wstring output;  ///< empty: the saved folder
    std::wstring encoder; ///< never empty, even where nothing is encoded: start-up would look for one and want it used
};

/// The settings of a run: the user's saved ones with what the command line says in their place. Runs change none of
/// the saved ones.
///
/// Fails when the run asks, by itself or by the saved settings, for what this version or the format does not have.
base::Result<state::RipSettings> settingsForRun(const state::RipSettings& saved, const RipOptions& options,
                                                const RunPlaces& places);

/// The format that a run makes.
Format formatOf(const state::RipSettings& saved, const RipOptions& options);

}
