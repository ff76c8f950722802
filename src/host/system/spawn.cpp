#include "host/system/spawn.h"

#include "host/posix/descriptor.h"
#include "host/posix/program_search.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

/// The settings of a start, freed with their owner.
class StartSettings {
public:
    StartSettings()
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
    }
    ~StartSettings()
    {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    StartSettings(const StartSettings&) = delete;
    StartSettings& operator=(const StartSettings&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

/// Our environment with the texts of encoders in UTF-8, without which they turn umlauts into "#", and with plain
/// numbers. Programs with windows keep the user's language. What it lists is ours or lies in `own`.
std::vector<char*> childEnvironment(std::vector<std::string>& own)
{
    std::vector<char*> variables;
    std::string whole;
    for (char* const* entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view variable(*entry);
        constexpr std::string_view overAll = "LC_ALL=";
        if (variable.starts_with(overAll))
            whole = variable.substr(overAll.size());
        else if (!variable.starts_with("LC_CTYPE=") && !variable.starts_with("LC_NUMERIC="))
            variables.push_back(*entry);
    }
    own = {"LC_CTYPE=C.UTF-8", "LC_NUMERIC=C"};
    if (!whole.empty()) {
        std::erase_if(variables, [](std::string_view variable) {
            return variable.starts_with("LANG=") || variable.starts_with("LC_");
        });
        own.push_back("LANG=" + whole);
    }
    for (std::string& variable : own)
        variables.push_back(variable.data());
    variables.push_back(nullptr);
    return variables;
}

/// The words of a command as a program gets them: its own name, then the arguments, which stay the request's.
std::vector<char*> childArguments(SpawnRequest& request)
{
    std::vector<char*> words{request.program.data()};
    for (std::string& argument : request.arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    return words;
}

/// What the first line of a script asks for; empty for a file that is none.
std::string interpreterOf(const std::string& program)
{
    constexpr std::size_t longestLine = 256;
    std::array<char, longestLine> start{};
    const Descriptor file(open(program.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const ssize_t count = file ? read(file.get(), start.data(), start.size()) : 0;
    std::string_view line(start.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (!line.starts_with("#!"))
        return {};
    line = line.substr(0, line.find('\n'));
    line.remove_prefix(std::min(line.find_first_not_of(" \t", 2), line.size()));
    // A CR is no blank to the system: it looks for an interpreter with that name.
    return std::string(line.substr(0, line.find_first_of(" \t")));
}

/// The system's own words for these are about a file that is there.
base::Failure startFailure(const SpawnRequest& request, int error)
{
    using Kind = base::Failure::Kind;
    if (error == ENOEXEC)
        return {Kind::invalid, request.program, "is no program that this system can run"};
    if (error == ENOENT && isProgramFile(request.program) && access(request.folder.c_str(), X_OK) == 0) {
        const std::string interpreter = interpreterOf(request.program);
        return {Kind::unavailable, request.program,
                interpreter.empty() ? "cannot be run: its loader is missing, it may be for another system"
                                    : "cannot be run: its interpreter is missing (" + interpreter + ")"};
    }
    return systemFailure(request.program, "started", error);
}

/// The file behind its end; one that is large enough is put aside before.
Descriptor openOutput(const std::string& path)
{
    constexpr off_t mostBytes = 1 << 20;
    constexpr int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY;
    constexpr mode_t ownerOnly = 0600;
    Descriptor file(open(path.c_str(), flags, ownerOnly));
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size < mostBytes)
        return file;
    std::rename(path.c_str(), (path + ".1").c_str());
    return Descriptor(open(path.c_str(), flags, ownerOnly));
}

}

bool isLiving(pid_t child)
{
    siginfo_t info{};
    const int answer = waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT);
    return answer == 0 && info.si_pid == 0;
}

base::Result<pid_t> spawn(SpawnRequest request)
{
    // Opened here and not by the child, so that a log that cannot be written does not keep an encoder from its work.
    Descriptor output = openOutput(request.outputFile);
    if (!output)
        output = Descriptor(open("/dev/null", O_WRONLY | O_CLOEXEC));

    StartSettings start;
    posix_spawn_file_actions_addopen(&start.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&start.actions, output.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&start.actions, output.get(), STDERR_FILENO);
    posix_spawn_file_actions_addchdir_np(&start.actions, request.folder.c_str());
    posix_spawn_file_actions_addclosefrom_np(&start.actions, STDERR_FILENO + 1);

    sigset_t all;
    sigset_t none;
    sigfillset(&all);
    sigemptyset(&none);
    posix_spawnattr_setsigdefault(&start.attributes, &all);
    posix_spawnattr_setsigmask(&start.attributes, &none);
    posix_spawnattr_setpgroup(&start.attributes, 0);
    posix_spawnattr_setflags(&start.attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    std::vector<std::string> ownVariables;
    pid_t child = 0;
    const int error = posix_spawn(&child, request.program.c_str(), &start.actions, &start.attributes,
                                  childArguments(request).data(), childEnvironment(ownVariables).data());
    if (error != 0)
        return startFailure(request, error);
    return child;
}

}
