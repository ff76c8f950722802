#include "host/system/spawn.h"

#include "host/posix/descriptor.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
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

/// Our environment with the texts of encoders in UTF-8: without that they turn umlauts into "#".
std::vector<std::string> childEnvironment()
{
    std::vector<std::string> variables;
    for (char* const* entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view variable = *entry;
        if (!variable.starts_with("LC_ALL="))
            variables.emplace_back(variable);
    }
    variables.emplace_back("LC_ALL=C.UTF-8");
    return variables;
}

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> list;
    list.reserve(texts.size() + 1);
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

}

base::Result<pid_t> spawn(const SpawnRequest& request)
{
    // Opened here and not by the child, so that a log that cannot be written does not keep an encoder from its work.
    Descriptor output(open(request.outputFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY, 0600));
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

    std::vector<std::string> words{request.program};
    words.insert(words.end(), request.arguments.begin(), request.arguments.end());
    std::vector<std::string> environment = childEnvironment();
    pid_t child = 0;
    const int error = posix_spawn(&child, request.program.c_str(), &start.actions, &start.attributes,
                                  pointers(words).data(), pointers(environment).data());
    if (error != 0)
        return systemFailure(request.program, "started", error);
    return child;
}

}
