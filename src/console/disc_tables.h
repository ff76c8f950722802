#pragma once

#include "platform/discs.h"

#include <string>
#include <vector>

namespace tonquay::console {

/// What `list` and `drives` show people, ended by a line end. Nothing in it can act on a terminal.
std::string listTable(const platform::DiscTable& table);
std::string drivesTable(const std::vector<platform::DriveDescription>& drives);

}
