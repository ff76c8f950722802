#pragma once

#include <sys/stat.h>

namespace tonquay::simulated {

/// The system's own calls, which lie below those that the library puts in their place.
int nextStat(const char* path, struct stat* status);

}
