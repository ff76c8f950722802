#pragma once

#include "platform/platform.h"
#include "platform/processes.h"

#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace tonquay::console {

/// The processes of a run in the terminal. It remembers how each child ended, which the run itself does not ask of all
/// of them; and when the program is ended from within, whoever waits for the run is told first, and the status says
/// that something is missing.
class RunProcesses final : public platform::Processes {
public:
    RunProcesses(platform::Processes& real, std::function<void()> beforeEnd);

    base::Result<Child> start(std::wstring_view command, WindowStyle style) override;
    void expectLongWork(Child child) override { real_.expectLongWork(child); }
    std::optional<int> exitCode(Child child) override;
    [[noreturn]] void endProgram(int status) override;

    /// Calls `told` for each child whose end is seen from now on, once, before whoever asked goes on.
    void followEnds(std::function<void(Child)> told) { ended_ = std::move(told); }

    /// True when no child that was started here lives any more.
    bool allEnded();

private:
    platform::Processes& real_;
    std::function<void()> beforeEnd_;
    std::function<void(Child)> ended_;
    std::map<Child, std::optional<int>> codes_;
};

}
