#pragma once

#include "base/result.h"

#include <string>
#include <string_view>

namespace tonquay::platform {

/// Where noteworthy events leave a line, for whoever looks into it later. It never shows a dialog and never fails.
class Diagnostics {
public:
    virtual ~Diagnostics() = default;

    /// One UTF-8 line without its line end, with the area that it comes from ("files", "drive", "encoder").
    /// Callable from any thread.
    virtual void line(std::string_view area, std::string_view text) = 0;
};

/// Goes on after a step of the world that failed, and leaves the line that says so. True when the step succeeded.
template <class T>
bool passOver(Diagnostics& log, const base::Result<T>& result, std::string_view step)
{
    if (!result)
        log.line("passed over", std::string(step) + ": " + base::describe(result.failure()));
    return static_cast<bool>(result);
}

}
