#include "host/system/held_files.h"

#include "base/text.h"
#include "host/posix/descriptor.h"
#include "host/posix/folder.h"
#include "host/system/spawn.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

FileIdentity identify(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, true};
}

/// The same file, or the same name for one that is not there yet: then only its case could tell two apart.
bool sameFile(const std::string& left, const std::string& right, const FileIdentity& leftIdentity)
{
    return base::sameText(base::fromHostBytes(left), base::fromHostBytes(right)) ||
           (leftIdentity.known && leftIdentity == identify(right));
}

/// The paths of what is in a folder; none for a folder that is not there.
std::vector<std::string> entriesOf(const std::string& folder)
{
    std::vector<std::string> paths;
    const OpenFolder open = openFolder(folder);
    while (const dirent* entry = open != nullptr ? readdir(open.get()) : nullptr)
        if (entry->d_name[0] != '.')
            paths.push_back(folder + '/' + entry->d_name);
    return paths;
}

/// A child and what it has started in turn: an encoder may be a script around another one.
std::vector<std::string> withDescendants(pid_t child)
{
    constexpr std::size_t most = 64;
    constexpr std::size_t longestList = 1u << 16;
    std::vector<std::string> processes{std::to_string(child)};
    for (std::size_t i = 0; i < processes.size(); ++i)
        for (const std::string& thread : entriesOf("/proc/" + processes[i] + "/task")) {
            const std::string list = thread + "/children";
            const Descriptor file(open(list.c_str(), O_RDONLY | O_CLOEXEC));
            const auto text = readToEnd(file.get(), longestList, list);
            std::istringstream numbers(text ? *text : std::string());
            for (std::string number; processes.size() < most && numbers >> number;)
                processes.push_back(number);
        }
    return processes;
}

bool hasOpen(pid_t child, const FileIdentity& file)
{
    if (!file.known)
        return false;
    return std::ranges::any_of(withDescendants(child), [&](const std::string& process) {
        return std::ranges::any_of(entriesOf("/proc/" + process + "/fd"),
                                   [&](const std::string& open) { return identify(open) == file; });
    });
}

}

void HeldFiles::childStarted(pid_t child, std::vector<std::string> paths)
{
    Child started{child, {}};
    for (std::string& path : paths)
        started.files.push_back({.path = std::move(path)});
    children_.push_back(std::move(started));
}

void HeldFiles::childEnded(pid_t child)
{
    std::erase_if(children_, [child](const Child& entry) {
        if (entry.process != child)
            return false;
        removeWhatIsLeft(entry);
        return true;
    });
}

void HeldFiles::forgetEnded()
{
    std::erase_if(children_, [](const Child& entry) {
        if (isLiving(entry.process))
            return false;
        removeWhatIsLeft(entry);
        return true;
    });
}

void HeldFiles::removeWhatIsLeft(const Child& child)
{
    // Most are to stay, and not worth a look.
    for (const Named& named : child.files)
        if (named.goesAtEnd.known && named.goesAtEnd == identify(named.path))
            unlink(named.path.c_str());
}

bool HeldFiles::inUse(const std::string& path)
{
    forgetEnded();
    if (children_.empty())
        return false;
    const FileIdentity file = identify(path);
    return std::ranges::any_of(children_, [&](const Child& child) {
        return hasOpen(child.process, file) ||
               std::ranges::any_of(child.files, [&](const Named& named) { return sameFile(path, named.path, file); });
    });
}

bool HeldFiles::awaited(const std::string& path)
{
    return find(path, identify(path)) != nullptr;
}

bool HeldFiles::removeAtEnd(const std::string& path)
{
    const FileIdentity file = identify(path);
    Named* const named = find(path, file);
    if (named != nullptr) {
        // The command may have it in another case.
        named->path = path;
        named->goesAtEnd = file;
    }
    return named != nullptr;
}

/// The entry of a child that awaits the file; null when none does.
HeldFiles::Named* HeldFiles::find(const std::string& path, const FileIdentity& file)
{
    forgetEnded();
    for (Child& child : children_)
        for (Named& named : child.files) {
            if (named.opened || !sameFile(path, named.path, file))
                continue;
            named.opened = hasOpen(child.process, file);
            if (!named.opened)
                return &named;
        }
    return nullptr;
}

}
