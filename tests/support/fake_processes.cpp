#include "support/fake_processes.h"

#include "base/text.h"

#include <algorithm>

namespace tonquay::test {

base::Result<platform::Processes::Child> FakeProcesses::start(std::wstring_view command, WindowStyle style)
{
    const std::wstring text(command);
    started.push_back({text, style, files_.currentFolder(), 0});
    const std::wstring folded = base::upper(text);
    const auto script = std::ranges::find_if(
        scripts, [&](const Script& s) { return folded.find(base::upper(s.named)) != std::wstring::npos; });
    if (script == scripts.end())
        return base::Failure{base::Failure::Kind::notFound, base::utf8(text), "there is no such program"};

    const Script chosen = *script;
    const Child child = ++last_;
    started.back().child = child;
    if (chosen.atStart)
        chosen.atStart(text);
    Running running;
    if (chosen.output)
        running.output = chosen.output(text);
    if (chosen.atEnd)
        running.atEnd = [atEnd = chosen.atEnd, text] { atEnd(text); };
    if (!running.output.empty())
        files_.hold(running.output);
    children_[child] = std::move(running);
    if (chosen.input) {
        const std::wstring input = chosen.input(text);
        files_.keepFromRemoval(input);
        loop_.after(std::min(chosen.opensInputAfter, chosen.lasts), [this, input] { files_.allowRemoval(input); });
    }
    if (!chosen.endless)
        loop_.after(chosen.lasts, [this, child, code = chosen.exitCode] { end(child, code); });
    return child;
}

std::optional<int> FakeProcesses::exitCode(Child child)
{
    const auto found = children_.find(child);
    if (found == children_.end())
        return 0;
    const std::optional<int> code = found->second.code;
    if (code)
        children_.erase(found);
    return code;
}

void FakeProcesses::end(Child child, int exitCode)
{
    const auto found = children_.find(child);
    if (found == children_.end() || found->second.code)
        return;
    found->second.code = exitCode;
    if (!found->second.output.empty())
        files_.release(found->second.output);
    if (const auto atEnd = found->second.atEnd)
        atEnd();
}

std::size_t FakeProcesses::living() const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(children_, [](const auto& entry) { return !entry.second.code; }));
}

}
