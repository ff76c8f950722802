#pragma once

#include "host/system/command_text.h"
#include "host/system/end_actions.h"
#include "host/system/held_files.h"
#include "host/system/host_event_loop.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "platform/processes.h"

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tonquay::host {

/// Starts other programs directly; no shell ever sees a command.
///
/// A program is looked for without regard to case: a path with a folder in it there, a bare name in the program
/// folder, in the current folder and on PATH; each as it stands, then with ".exe" behind it. An argument that begins
/// with letter, colon and backslash becomes a host path, and an unquoted wildcard becomes the names that it matches, or
/// stays as it is when there are none. A file of the current folder whose name begins with a hyphen, in quotes or found
/// by a wildcard, gets "./" before it: a song called "-delete" is not to become a switch.
///
/// A child runs in a process group of its own, with /dev/null as its input, a file as its output, all other
/// descriptors closed, signals as usual, characters in UTF-8 and plain numbers. A bad end leaves a line with the
/// command, and so does a program that is there but cannot be run: one for another system, or a script whose
/// interpreter is missing.
class HostProcesses final : public platform::Processes {
public:
    struct Settings {
        /// Where children write to; appended. Never a pipe: an encoder whose reader ends dies of it.
        std::string outputFile;
        std::string searchPath;               ///< $PATH
        std::chrono::milliseconds grace{500}; ///< for a child that is asked to end, before it is killed
    };

    /// Everything given outlives this.
    HostProcesses(platform::FileSystem& files, HostEventLoop& loop, platform::Diagnostics& log, HeldFiles& held,
                  EndActions& endActions, Settings settings);
    ~HostProcesses() override;

    base::Result<Child> start(std::wstring_view command, WindowStyle style) override;
    void expectLongWork(Child child) override;
    std::optional<int> exitCode(Child child) override;
    [[noreturn]] void endProgram(int status) override;

    /// Ends all children that live, with the programs that they started in turn: asks first (SIGTERM), and kills what
    /// is there when the grace is over. Blocks until they are gone, twice the grace at most. Files that they were
    /// writing stay behind unfinished. A program that went into a session of its own is not reached.
    void endChildren();

private:
    struct Running;

    base::Result<Child> startSplit(std::string program, const CommandText& command, std::string commandText);
    base::Result<Child> failed(base::Failure failure);
    std::string findProgram(std::wstring_view program);
    std::string findBare(std::wstring_view name);
    std::string plainArgument(const std::wstring& text, bool meantAsName);
    std::vector<std::string> hostArguments(const CommandText& command, const std::string& current,
                                           std::vector<std::string>& named);
    void collect(Running& child);

    platform::FileSystem& files_;
    HostEventLoop& loop_;
    platform::Diagnostics& log_;
    HeldFiles& held_;
    EndActions& endActions_;
    Settings settings_;
    std::map<Child, std::shared_ptr<Running>> children_;
    Child last_ = 0;
};

}
