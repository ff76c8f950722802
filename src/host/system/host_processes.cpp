#include "host/system/host_processes.h"

#include "base/text.h"
#include "host/posix/descriptor.h"
#include "host/posix/processor_turns.h"
#include "host/posix/program_search.h"
#include "host/system/path_map.h"
#include "host/system/spawn.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tonquay::host {

using base::Failure;

struct HostProcesses::Running {
    pid_t process = 0;
    std::string command;
    std::optional<int> code;
    Descriptor handle;
    std::unique_ptr<HostEventLoop::Watch> watch; ///< gone before the handle that it watches
};

namespace {

constexpr std::wstring_view programEnding = L".exe";

bool isDrivePath(std::wstring_view text)
{
    const wchar_t letter = text.empty() ? L'\0' : base::upper(text.front());
    return text.size() >= 3 && letter >= L'A' && letter <= L'Z' && text[1] == L':' && text[2] == L'\\';
}

/// What can be polled for the end of a child. The C library's own name for the call cannot be linked from C++.
Descriptor openHandle(pid_t process)
{
    return Descriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
}

/// The folder part of a path with its separator, empty for a bare name.
std::wstring_view folderPart(std::wstring_view path)
{
    return path.substr(0, path.find_last_of(L"\\/:") + 1);
}

}

HostProcesses::HostProcesses(platform::FileSystem& files, HostEventLoop& loop, platform::Diagnostics& log,
                             HeldFiles& held, EndActions& endActions, Settings settings)
    : files_(files),
      loop_(loop),
      log_(log),
      held_(held),
      endActions_(endActions),
      settings_(std::move(settings))
{}

HostProcesses::~HostProcesses() = default;

base::Result<platform::Processes::Child> HostProcesses::start(std::wstring_view command, WindowStyle)
{
    const std::string text = base::utf8(command);
    if (command.find(L'\0') != std::wstring_view::npos)
        return failed({Failure::Kind::invalid, text.substr(0, text.find('\0')), "holds a character without a place"});
    // Only a path may hold blanks; of a bare name the first word is all there is to look for.
    std::string program;
    const auto split = splitCommand(command, [&](std::wstring_view path) {
        const bool bareWithBlanks = folderPart(path).empty() && path.find_first_of(L" \t") != std::wstring_view::npos;
        if (!bareWithBlanks)
            program = findProgram(path);
        return !program.empty();
    });
    if (!split)
        return failed({Failure::Kind::notFound, text, "names no program"});
    // One in quotes was not asked for.
    return startSplit(program.empty() ? findProgram(split->program) : program, *split, text);
}

base::Result<platform::Processes::Child> HostProcesses::startSplit(std::string program, const CommandText& command,
                                                                   std::string commandText)
{
    SpawnRequest request;
    request.program = std::move(program);
    if (request.program.empty())
        return failed({Failure::Kind::notFound, commandText, "there is no such program"});
    const std::wstring folder = files_.currentFolder();
    if (!files_.folderExists(folder))
        return failed({Failure::Kind::notFound, commandText, "its folder is gone: " + files_.hostPath(folder)});
    request.folder = files_.hostPath(folder);
    request.outputFile = settings_.outputFile;
    std::vector<std::string> named;
    request.arguments = hostArguments(command, request.folder, named);

    const auto process = spawn(std::move(request));
    if (!process)
        return failed({process.failure().kind, commandText, process.failure().text});
    held_.childStarted(*process, std::move(named));

    const auto child = std::make_shared<Running>();
    child->process = *process;
    child->command = std::move(commandText);
    child->handle = openHandle(*process);
    if (child->handle)
        child->watch = loop_.watch(child->handle.get(), [this, child = std::weak_ptr(child)] {
            if (const auto ended = child.lock())
                collect(*ended);
        });
    children_[++last_] = child;
    return last_;
}

base::Result<platform::Processes::Child> HostProcesses::failed(Failure failure)
{
    log_.line("processes", base::describe(failure));
    return failure;
}

/// The host path of a program, empty when there is none of that name.
std::string HostProcesses::findProgram(std::wstring_view program)
{
    const bool bare = folderPart(program).empty();
    for (const std::wstring& name : {std::wstring(program), std::wstring(program).append(programEnding)}) {
        std::string found = bare ? findBare(name) : files_.hostPath(name);
        if (isProgramFile(found))
            return found;
    }
    return {};
}

std::string HostProcesses::findBare(std::wstring_view name)
{
    for (const std::wstring& folder : {std::wstring(platform::programFolder), files_.currentFolder()})
        if (std::string path = files_.hostPath(folder + L'\\' + std::wstring(name)); isProgramFile(path))
            return path;
    for (std::string_view rest = settings_.searchPath; !rest.empty();) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const std::wstring folder = files_.programPath(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (folder.empty())
            continue;
        if (std::string path = files_.hostPath(folder + L'\\' + std::wstring(name)); isProgramFile(path))
            return path;
    }
    return {};
}

/// An argument that is no path with a drive.
std::string HostProcesses::plainArgument(const std::wstring& text, bool meantAsName)
{
    if (meantAsName && text.starts_with(L'-') && folderPart(text).empty() && files_.fileExists(text)) {
        const std::string path = files_.hostPath(text);
        return "./" + path.substr(path.rfind('/') + 1);
    }
    return base::utf8(text);
}

/// The arguments as the program gets them. `current` is the host path of the current folder; `named` takes the host
/// paths of all files that the arguments may mean, those of the current folder in the case that the command has.
std::vector<std::string> HostProcesses::hostArguments(const CommandText& command, const std::string& current,
                                                      std::vector<std::string>& named)
{
    std::vector<std::string> arguments;
    const auto add = [&](const std::wstring& text, bool meantAsName) {
        if (isDrivePath(text)) {
            arguments.push_back(files_.hostPath(text));
            named.push_back(arguments.back());
            return;
        }
        arguments.push_back(plainArgument(text, meantAsName));
        if (text.empty() || arguments.back().starts_with('-'))
            return;
        // Most of these are numbers and words, and in which case a file is on disk is not worth a reading of the
        // folder.
        const bool bare = folderPart(text).empty();
        named.push_back(bare ? joined(current, hostName(text)) : files_.hostPath(text));
    };
    bool hasInput = false;
    for (const CommandWord& word : command.arguments) {
        const std::wstring_view folder = folderPart(word.text);
        // A second wildcard says what the files that are made are called, so it stays what it is.
        const bool input = word.wildcard && !hasInput;
        hasInput = hasInput || word.wildcard;
        const auto names = input ? files_.list(folder.empty() ? std::wstring_view(L".") : folder,
                                               std::wstring_view(word.text).substr(folder.size()))
                                 : base::Result<std::vector<std::wstring>>(std::vector<std::wstring>{});
        if (!names || names->empty())
            add(word.text, word.quoted);
        else
            for (const std::wstring& name : *names)
                add(std::wstring(folder) + name, true);
    }
    return arguments;
}

void HostProcesses::expectLongWork(Child child)
{
    if (const auto found = children_.find(child); found != children_.end() && !found->second->code)
        giveLongTurns(found->second->process);
}

std::optional<int> HostProcesses::exitCode(Child child)
{
    const auto found = children_.find(child);
    if (found == children_.end())
        return 0;
    collect(*found->second);
    const auto code = found->second->code;
    if (code)
        children_.erase(found);
    return code;
}

/// Takes a child's end, if it has ended. No zombie stays, whether or not anybody asks for the code.
void HostProcesses::collect(Running& child)
{
    if (child.code)
        return;
    int status = 0;
    const pid_t answer = waitpid(child.process, &status, WNOHANG);
    if (answer == 0 || (answer < 0 && errno == EINTR))
        return;
    if (answer < 0)
        child.code = 0;
    else
        child.code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    child.watch.reset();
    child.handle = Descriptor();
    held_.childEnded(child.process);
    if (answer > 0 && WIFSIGNALED(status))
        log_.line("processes", child.command + ": ended by signal " + std::to_string(WTERMSIG(status)));
    else if (*child.code != 0)
        log_.line("processes", child.command + ": ended with status " + std::to_string(*child.code));
}

void HostProcesses::endChildren()
{
    std::vector<std::shared_ptr<Running>> living;
    for (const auto& [number, child] : children_) {
        collect(*child);
        if (!child->code)
            living.push_back(child);
    }
    // None is collected in between: its number then stays its own, and that of the group which it may leave behind.
    for (const int signal : {SIGTERM, SIGKILL}) {
        for (const auto& child : living)
            kill(-child->process, signal);
        const auto deadline = std::chrono::steady_clock::now() + settings_.grace;
        while (std::ranges::any_of(living, [](const auto& child) { return isLiving(child->process); }) &&
               std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    for (const auto& child : living)
        collect(*child);
}

void HostProcesses::endProgram(int status)
{
    endActions_.run();
    std::fflush(stdout);
    std::_Exit(status);
}

}
