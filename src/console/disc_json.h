#pragma once

#include "platform/discs.h"

#include <string>
#include <string_view>
#include <vector>

namespace tonquay::console {

/// The JSON documents of `list` and `drives`, UTF-8, ended by a line end. Their keys are a promise: they are only ever
/// added to.
std::string listJson(const platform::DiscTable& table);
std::string drivesJson(const std::vector<platform::DriveDescription>& drives);

/// Short fixed word for a problem ("no-permission"); empty for none.
std::string_view word(platform::DriveProblem problem);

}
