#include "host/system/places.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

std::string homeFolder()
{
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr && user->pw_dir[0] == '/' ? user->pw_dir : "/";
}

}

Places placesOf(const std::function<std::string(const char*)>& environment)
{
    const auto absolute = [&](const char* variable, const std::string& otherwise) {
        const std::string value = environment(variable);
        return value.starts_with('/') ? value : otherwise;
    };
    const std::string home = absolute("HOME", homeFolder());
    Places found;
    found.programFolder = absolute("XDG_DATA_HOME", home + "/.local/share") + "/cd-tonquay";
    found.discNames = found.programFolder + "-discs";
    found.settingsFile = absolute("XDG_CONFIG_HOME", home + "/.config") + "/cd-tonquay/settings";
    found.logFile = absolute("XDG_STATE_HOME", home + "/.local/state") + "/cd-tonquay/log";
    found.tempFolder = absolute("TMPDIR", "/tmp");
    if (found.tempFolder.find_first_of(" \t") != std::string::npos)
        found.tempFolder = "/tmp";
    return found;
}

Places places()
{
    return placesOf([](const char* variable) {
        const char* value = std::getenv(variable);
        return std::string(value == nullptr ? "" : value);
    });
}

bool makeFolders(const std::string& folder)
{
    for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
        const std::string part = folder.substr(0, end);
        if (mkdir(part.c_str(), 0700) != 0 && errno != EEXIST && errno != EROFS && errno != EACCES)
            return false;
        if (end == std::string::npos)
            break;
    }
    struct stat status {};
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}
