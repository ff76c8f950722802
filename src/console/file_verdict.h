#pragma once

#include <cstdint>
#include <string>

namespace tonquay::console {

/// What a look at a finished file has found.
struct FileVerdict {
    bool whole = false;
    std::string text{};          ///< what is wrong, without the file's name; for a whole file a remark, mostly empty
    std::int64_t soundBytes = 0; ///< of a whole WAV file
};

}
