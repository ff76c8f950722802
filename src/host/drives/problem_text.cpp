#include "host/drives/problem_text.h"

#include <array>
#include <grp.h>
#include <optional>
#include <sys/stat.h>

namespace tonquay::host {
namespace {

/// None when the group's own rights do not reach either.
std::optional<std::string> groupThatMayRead(const std::string& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || (status.st_mode & S_IRGRP) == 0)
        return std::nullopt;
    group entry{};
    group* found = nullptr;
    std::array<char, 4096> names{};
    if (::getgrgid_r(status.st_gid, &entry, names.data(), names.size(), &found) != 0 || !found)
        return std::to_string(status.st_gid);
    return entry.gr_name;
}

std::string noPermissionText(const std::string& path)
{
    const std::string lack = "No permission to read " + path;
    if (const auto name = groupThatMayRead(path))
        return lack + ", which the group " + *name + " may: join it with \"sudo usermod -aG " + *name +
               " $USER\" and log in anew";
    return lack + ": ask the administrator of this machine for it";
}

}

std::string problemText(platform::DriveProblem problem, const std::string& path)
{
    using platform::DriveProblem;
    switch (problem) {
    case DriveProblem::none: return {};
    case DriveProblem::noDevice: return "There is no drive at " + path + ": connect it, or name another one";
    case DriveProblem::noPermission: return noPermissionText(path);
    case DriveProblem::busy: return "Another program holds " + path + ": close that program, and try again";
    case DriveProblem::trayOpen: return "The door is open: close it with an audio disc in";
    case DriveProblem::noDisc: return "No disc is in: put an audio disc in";
    case DriveProblem::dataDisc: return "The disc holds data only: put an audio disc in";
    case DriveProblem::unreadable: return "The disc's table cannot be read: clean the disc, or try another drive";
    }
    return {};
}

std::string gettingReadyText(const std::string& path)
{
    return path + " is getting ready: try again in a few seconds";
}

}
