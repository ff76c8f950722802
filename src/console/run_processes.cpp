#include "console/run_processes.h"

#include "console/exit_status.h"

#include <cstdlib>
#include <utility>

namespace tonquay::console {

RunProcesses::RunProcesses(platform::Processes& real, std::function<void()> beforeEnd)
    : real_(real),
      beforeEnd_(std::move(beforeEnd))
{}

base::Result<platform::Processes::Child> RunProcesses::start(std::wstring_view command, WindowStyle style)
{
    auto child = real_.start(command, style);
    if (child)
        codes_[*child] = std::nullopt;
    return child;
}

std::optional<int> RunProcesses::exitCode(Child child)
{
    const auto known = codes_.find(child);
    if (known == codes_.end())
        return real_.exitCode(child);
    if (!known->second) {
        known->second = real_.exitCode(child);
        if (known->second && ended_)
            ended_(child);
    }
    return known->second;
}

void RunProcesses::endProgram(int)
{
    beforeEnd_();
    real_.endProgram(static_cast<int>(ExitStatus::incomplete));
    std::abort();
}

bool RunProcesses::allEnded()
{
    bool all = true;
    for (const auto& [child, code] : codes_)
        all = exitCode(child).has_value() && all;
    return all;
}

}
