#include "host/oggtool/ogg_arguments.h"
#include "host/posix/program_search.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

// The adapter between the command texts of this program and the Ogg tools of the machine. It lies in the program folder
// under the tools' names, turns its arguments, and becomes the machine's program: its process, its files, its end.

using namespace tonquay;

namespace {

// As shells have them.
constexpr int notStartable = 126;
constexpr int notFound = 127;

int complain(int status, const std::string& problem)
{
    std::fprintf(stderr, "%s: %s\n", std::string(host::oggToolName).c_str(), problem.c_str());
    return status;
}

bool isThisProgram(const std::string& path)
{
    std::error_code error;
    return host::isOggTool(path) || std::filesystem::equivalent(path, "/proc/self/exe", error);
}

/// Returns only when no program of that name can be started.
int become(const std::string& program, host::Arguments arguments)
{
    // Set for what we become: a script on PATH that leads back here would go round for ever.
    constexpr const char* variable = "TONQUAY_OGGTOOL";
    if (std::getenv(variable) != nullptr)
        return complain(notStartable, program + ": the one on PATH leads back to this program");
    setenv(variable, program.c_str(), 1);

    int status = notFound;
    for (std::string& path : host::programsOnPath(program, host::searchPath())) {
        if (isThisProgram(path))
            continue;
        std::vector<char*> words{path.data()};
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        execv(path.c_str(), words.data());
        status = complain(notStartable, base::describe(host::systemFailure(path, "started", errno)));
    }
    return status == notFound ? complain(status, program + ": no such program on PATH") : status;
}

}

int main(int count, char** words)
{
    const std::string calledAs = count > 0 ? words[0] : "";
    const std::string program(host::machineProgramFor(calledAs));
    host::Arguments arguments(words + (count > 0 ? 1 : 0), words + count);
    if (program == "oggenc")
        return become(program, host::encoderArguments(std::move(arguments)));
    if (program == "vorbiscomment") {
        // Held until then: the program that we become inherits the copy.
        auto comments = host::commentArguments(std::move(arguments));
        return comments ? become(program, std::move(comments->arguments))
                        : complain(notStartable, base::describe(comments.failure()));
    }
    return complain(notFound, calledAs + ": to be called as oggenc.exe, oggencp4.exe or vorbiscomment.exe");
}
