#include "host/posix/program_search.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

namespace fs = std::filesystem;

bool isProgramFile(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

std::vector<std::string> programsOnPath(std::string_view name, std::string_view searchPath)
{
    std::vector<std::string> found;
    while (!searchPath.empty()) {
        const std::string_view folder = searchPath.substr(0, searchPath.find(':'));
        searchPath.remove_prefix(std::min(folder.size() + 1, searchPath.size()));
        if (!folder.starts_with('/'))
            continue;
        std::string path(folder);
        path.append("/").append(name);
        if (isProgramFile(path))
            found.push_back(std::move(path));
    }
    return found;
}

std::string searchPath()
{
    const char* path = std::getenv("PATH");
    return path != nullptr ? path : "/usr/bin:/bin";
}

std::string ownProgramFile()
{
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

std::string siblingProgram(std::string_view name)
{
    const std::string own = ownProgramFile();
    std::string beside = own.substr(0, own.rfind('/') + 1).append(name);
    if (isProgramFile(beside))
        return beside;
    const auto found = programsOnPath(name, searchPath());
    return found.empty() ? std::string() : found.front();
}

bool isOggTool(const std::string& path)
{
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return !error && real.filename() == oggToolName;
}

}
