#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// Programs that are not ours as judges, and ours as a person starts them: directly, with no shell in between.
namespace tonquay::test {

struct ProgramEnd {
    int status = -1; ///< of exit; 128 plus its number for a signal, 127 when it cannot be started
    std::string out; ///< standard output, then standard error
};

/// Runs a program to its end. `words` begin with the name that it is called by; a bare one is looked for on PATH.
/// `environment` is put over ours.
ProgramEnd runProgram(const std::vector<std::string>& words,
                      const std::map<std::string, std::string>& environment = {});

/// Starts one and answers its process; its output goes nowhere.
pid_t startProgram(const std::vector<std::string>& words);

}
