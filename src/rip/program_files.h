#pragma once

#include "platform/platform.h"

#include <cstdint>

namespace tonquay::rip {

/// The list of a run's files for the suite's player. It cannot be written yet: asking leaves a line.
class ProgramFiles {
public:
    explicit ProgramFiles(platform::Platform& platform) : platform_(platform) {}

    /// Writes the program file of the selected tracks; `showMessage` 1 tells the user where it is.
    void savepgm(std::int16_t showMessage);

private:
    platform::Platform& platform_;
};

}
