#pragma once

#include "base/result.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace tonquay::host {

/// What a child process is started with. Host paths and bytes as the program gets them.
struct SpawnRequest {
    std::string program;
    std::vector<std::string> arguments; ///< without the program's own name
    std::string folder;
    std::string outputFile; ///< for standard output and error; when it cannot be opened they go nowhere
};

/// Starts a program without a shell in between, in a process group of its own. Fails when the system cannot run it.
base::Result<pid_t> spawn(SpawnRequest request);

/// True until a child of ours has ended. It is not reaped by this.
bool isLiving(pid_t child);

}
