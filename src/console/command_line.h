#pragma once

#include "base/result.h"
#include "console/options.h"

#include <string>
#include <vector>

namespace tonquay::console {

/// Reads the command line, without the program's name. Fails with one line for people when it makes no sense or asks
/// for something that this version does not have yet; nothing outside is looked at.
base::Result<Command> parseCommandLine(const std::vector<std::string>& arguments);

}
