#include "support/run_program.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tonquay::test {

namespace {

constexpr int cannotStart = 127;

[[noreturn]] void become(const std::vector<std::string>& words, const std::map<std::string, std::string>& environment,
                         int output)
{
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<std::string> copies = words;
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (std::string& word : copies)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execvp(pointers.front(), pointers.data());
    _exit(cannotStart);
}

}

ProgramEnd runProgram(const std::vector<std::string>& words, const std::map<std::string, std::string>& environment)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    const pid_t child = fork();
    if (child == 0)
        become(words, environment, ends[1]);
    close(ends[1]);
    ProgramEnd end;
    std::array<char, 4096> block{};
    for (ssize_t got = 0; (got = read(ends[0], block.data(), block.size())) > 0;)
        end.out.append(block.data(), static_cast<std::size_t>(got));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    end.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return end;
}

pid_t startProgram(const std::vector<std::string>& words)
{
    const pid_t child = fork();
    if (child == 0)
        become(words, {}, open("/dev/null", O_WRONLY | O_CLOEXEC));
    return child;
}

}
