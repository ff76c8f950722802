#pragma once

#include "base/result.h"
#include "host/posix/descriptor.h"

#include <cstdint>
#include <string>

namespace tonquay::host {

/// A file that is open for reading.
struct PlainFile {
    Descriptor descriptor;
    std::int64_t length = 0; ///< when it was opened
};

/// Fails when there is no such file, it may not be read, or it is a folder, a pipe or a device; never waits for one.
base::Result<PlainFile> openPlainFile(const std::string& hostPath);

}
