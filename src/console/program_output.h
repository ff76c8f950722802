#pragma once

#include "console/screen.h"

#include <cstdint>
#include <string>

namespace tonquay::console {

/// Shows what encoders write, line by line, on standard error. They write to a file, never to us; what stood in it
/// before is not shown.
class ProgramOutput {
public:
    ProgramOutput(Screen& screen, std::string file);

    /// Shows the lines that have come to be whole since the last call. Of a line that its writer wrote over and over (a
    /// progress bar) the last state is shown.
    void showNew();

private:
    Screen& screen_;
    std::string file_;
    std::int64_t shown_ = 0;
};

}
