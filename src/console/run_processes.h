#pragma once

#include "platform/processes.h"

#include <functional>
#include <map>
#include <optional>

namespace tonquay::console {

/// The processes of a run in the terminal. It remembers how each child ended, which the run itself does not ask of all
/// of them; and when the program is ended from within, whoever waits for the run is told first, and the status says
/// that something is missing.
class RunProcesses final : public platform::Processes {
public:
    RunProcesses(platform::Processes& real, std::function<void()> beforeEnd);

    base::Result<Child> start(std::wstring_view command, WindowStyle style) override;
    std::optional<int> exitCode(Child child) override;
    [[noreturn]] void endProgram(int status) override;

    /// True when no child that was started here lives any more.
    bool allEnded();

private:
    platform::Processes& real_;
    std::function<void()> beforeEnd_;
    std::map<Child, std::optional<int>> codes_;
};

}
