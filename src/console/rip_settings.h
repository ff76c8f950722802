#pragma once

#include "base/result.h"
#include "console/options.h"
#include "state/settings.h"

#include <string>

namespace tonquay::console {

/// The settings of a run: the user's saved ones with what the command line says in their place. Runs change none of
/// the saved ones. `output` is the output folder in the program's form, empty for the saved one.
///
/// Fails when the run asks, by itself or by the saved settings, for what this version does not have.
base::Result<state::RipSettings> settingsForRun(const state::RipSettings& saved, const RipOptions& options,
                                                const std::wstring& output);

/// The format that a run makes.
Format formatOf(const state::RipSettings& saved, const RipOptions& options);

}
