#pragma once

#include "base/result.h"

#include <chrono>
#include <ctime>
#include <optional>
#include <string>
#include <sys/stat.h>

/// What the system says of a path, links followed.
namespace tonquay::host {

inline std::optional<struct stat> look(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

inline bool isFolder(const std::string& path)
{
    const auto status = look(path);
    return status && S_ISDIR(status->st_mode);
}

/// What makes a file read-only here, whoever may write it all the same.
inline bool ownerMayNotWrite(const struct stat& status)
{
    return (status.st_mode & S_IWUSR) == 0;
}

/// A moment as the clock on the wall of the user's time zone shows it.
inline std::chrono::local_seconds wallTime(std::time_t moment)
{
    std::tm local{};
    localtime_r(&moment, &local);
    return std::chrono::local_seconds(std::chrono::seconds(moment + local.tm_gmtoff));
}

inline base::Failure refused(const std::string& where, const char* text)
{
    return {base::Failure::Kind::refused, where, text};
}

}
