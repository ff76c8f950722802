#pragma once

#include "platform/processes.h"

#include <cstdlib>
#include <functional>
#include <utility>

namespace tonquay::console {

/// The processes of a run in the terminal: when the program is ended from within, whoever waits for the run is told
/// first, and the status says that something is missing.
class RunProcesses final : public platform::Processes {
public:
    RunProcesses(platform::Processes& real, std::function<void()> beforeEnd)
        : real_(real),
          beforeEnd_(std::move(beforeEnd))
    {}

    base::Result<Child> start(std::wstring_view command, WindowStyle style) override
    {
        return real_.start(command, style);
    }
    std::optional<int> exitCode(Child child) override { return real_.exitCode(child); }
    [[noreturn]] void endProgram(int) override
    {
        constexpr int incomplete = 1;
        beforeEnd_();
        real_.endProgram(incomplete);
        std::abort();
    }

private:
    platform::Processes& real_;
    std::function<void()> beforeEnd_;
};

}
