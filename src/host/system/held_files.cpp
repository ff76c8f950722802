#include "host/system/held_files.h"

#include "base/text.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>

namespace tonquay::host {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    bool known = false;
    bool operator==(const Identity& other) const
    {
        return known && other.known && device == other.device && inode == other.inode;
    }
};

Identity identify(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, true};
}

/// The same file, or the same name for one that is not there yet: then only its case could tell two apart.
bool sameFile(const std::string& left, const std::string& right, const Identity& leftIdentity)
{
    return base::sameText(base::fromHostBytes(left), base::fromHostBytes(right)) ||
           (leftIdentity.known && leftIdentity == identify(right));
}

bool isLiving(pid_t child)
{
    siginfo_t info{};
    const int answer = waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT);
    return answer == 0 && info.si_pid == 0;
}

bool hasOpen(pid_t child, const Identity& file)
{
    if (!file.known)
        return false;
    const std::string folder = "/proc/" + std::to_string(child) + "/fd";
    const std::unique_ptr<DIR, CloseFolder> open(opendir(folder.c_str()));
    if (open == nullptr)
        return false;
    while (const dirent* entry = readdir(open.get()))
        if (entry->d_name[0] != '.' && identify(folder + '/' + entry->d_name) == file)
            return true;
    return false;
}

}

void HeldFiles::childStarted(pid_t child, std::vector<std::string> paths)
{
    Child started{child, {}};
    for (std::string& path : paths)
        started.files.push_back({std::move(path), false});
    children_.push_back(std::move(started));
}

void HeldFiles::childEnded(pid_t child)
{
    std::erase_if(children_, [child](const Child& entry) { return entry.process == child; });
}

void HeldFiles::forgetEnded()
{
    std::erase_if(children_, [](const Child& entry) { return !isLiving(entry.process); });
}

bool HeldFiles::inUse(const std::string& path)
{
    forgetEnded();
    if (children_.empty())
        return false;
    const Identity file = identify(path);
    return std::ranges::any_of(children_, [&](const Child& child) {
        return hasOpen(child.process, file) ||
               std::ranges::any_of(child.files, [&](const Named& named) { return sameFile(path, named.path, file); });
    });
}

bool HeldFiles::awaited(const std::string& path)
{
    forgetEnded();
    if (children_.empty())
        return false;
    const Identity file = identify(path);
    for (Child& child : children_)
        for (Named& named : child.files) {
            if (named.opened || !sameFile(path, named.path, file))
                continue;
            named.opened = hasOpen(child.process, file);
            if (!named.opened)
                return true;
        }
    return false;
}

}
