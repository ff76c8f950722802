#include "host/system/path_map.h"

#include "base/text.h"
#include "host/posix/folder.h"

#include <algorithm>
#include <memory>
#include <sys/stat.h>
#include <utility>

namespace tonquay::host {

namespace {

constexpr std::wstring_view programFolderName = L"CDTONQUAY";
constexpr wchar_t backslashStandIn = 0xF05C;
constexpr wchar_t colonStandIn = 0xF03A;
constexpr std::wstring_view standIns = L"\xF05C\xF03A";

bool isThere(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

/// The name in `folder` that matches but for its case, the first in byte order; nothing when there is none.
std::optional<std::string> findName(const std::string& folder, std::wstring_view name)
{
    const OpenFolder open = openFolder(folder);
    if (open == nullptr)
        return std::nullopt;
    const std::wstring wanted = base::upper(name);
    std::optional<std::string> best;
    while (const dirent* entry = readdir(open.get())) {
        const std::string_view found = entry->d_name;
        // Most names of a large folder differ in their first letter; they are told without decoding them.
        const auto first = static_cast<unsigned char>(found.front());
        if (first < 0x80 && base::upper(static_cast<wchar_t>(first)) != wanted.front() && first != '\\' && first != ':')
            continue;
        if ((!best || found < *best) && base::upper(programName(found)) == wanted)
            best = found;
    }
    return best;
}

void appendNames(std::vector<std::wstring>& names, std::wstring_view path)
{
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(L'\\'), path.size());
        const std::wstring_view name = path.substr(0, end);
        if (name == L"..") {
            if (!names.empty())
                names.pop_back();
        } else if (!name.empty() && name != L".") {
            names.emplace_back(name);
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
}

std::string withoutEndSlash(std::string path)
{
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

/// What lies below `folder` in `path`, without a leading slash; nothing when `path` is elsewhere.
std::optional<std::string_view> below(const std::string& folder, std::string_view path)
{
    if (folder.empty() || !path.starts_with(folder))
        return std::nullopt;
    const std::string_view rest = path.substr(folder.size());
    if (!rest.empty() && !folder.ends_with('/') && rest.front() != '/')
        return std::nullopt;
    return rest.substr(std::min(rest.find_first_not_of('/'), rest.size()));
}

}

std::wstring programName(std::string_view hostName)
{
    return base::replaced(base::replaced(base::fromHostBytes(hostName), L'\\', backslashStandIn), L':', colonStandIn);
}

std::string hostName(std::wstring_view programName)
{
    if (programName.find_first_of(standIns) == std::wstring_view::npos)
        return base::utf8(programName);
    return base::utf8(base::replaced(base::replaced(programName, backslashStandIn, L'\\'), colonStandIn, L':'));
}

std::string joined(std::string folder, std::string_view hostName)
{
    if (!folder.ends_with('/'))
        folder += '/';
    return folder.append(hostName);
}

std::wstring Place::text() const
{
    std::wstring path = std::wstring(1, drive) + L':';
    for (const std::wstring& name : names)
        path.append(L"\\").append(name);
    return names.empty() ? path + L'\\' : path;
}

PathMap::PathMap(Drives drives) : drives_(std::move(drives))
{
    drives_.root = withoutEndSlash(drives_.root);
    drives_.programFolder = withoutEndSlash(drives_.programFolder);
}

std::optional<Place> PathMap::place(std::wstring_view path) const
{
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos)
        return std::nullopt;
    const std::wstring text = base::replaced(path, L'/', L'\\');
    std::wstring_view rest = text;
    Place place;
    place.drive = drive_;
    if (rest.size() >= 2 && rest[1] == L':') {
        place.drive = base::upper(rest[0]);
        if (place.drive < L'A' || place.drive > L'Z')
            return std::nullopt;
        rest.remove_prefix(2);
    }
    if (!rest.starts_with(L'\\'))
        if (const auto folder = folders_.find(place.drive); folder != folders_.end())
            place.names = folder->second;
    appendNames(place.names, rest);
    return place;
}

bool PathMap::beginsInProgramFolder(const Place& place) const
{
    return !place.names.empty() && !drives_.programFolder.empty() &&
           base::sameText(place.names.front(), programFolderName);
}

std::string PathMap::joinedAsGiven(const Place& place) const
{
    const bool inProgramFolder = beginsInProgramFolder(place);
    std::string path = inProgramFolder ? drives_.programFolder : drives_.root;
    for (auto name = place.names.begin() + (inProgramFolder ? 1 : 0); name != place.names.end(); ++name)
        path = joined(path, hostName(*name));
    return path;
}

const std::string* PathMap::asGiven(std::wstring_view path) const
{
    if (!path.empty() && path == lastPath_)
        return &lastHost_;
    lastPath_.clear();
    if (joinsPlainly(path)) {
        lastPath_ = path;
        return &lastHost_;
    }
    const auto place = this->place(path);
    if (!place || place->drive != L'C')
        return nullptr;
    lastHost_ = joinedAsGiven(*place);
    return &lastHost_;
}

/// Puts the host path of most paths together without taking them apart first: of those that begin at the root of C: and
/// go down only. Others, and those that start at a current folder, which may change, are none of its business.
bool PathMap::joinsPlainly(std::wstring_view path) const
{
    constexpr std::wstring_view separators = L"\\/";
    const bool whole = path.size() > 2 && base::upper(path[0]) == L'C' && path[1] == L':' &&
                       separators.find(path[2]) != std::wstring_view::npos;
    if (!whole || path.find(L'\0') != std::wstring_view::npos)
        return false;
    path.remove_prefix(3);
    lastHost_ = drives_.root;
    for (bool first = true; !path.empty();) {
        const std::size_t end = std::min(path.find_first_of(separators), path.size());
        const std::wstring_view name = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (name == L"." || name == L"..")
            return false;
        if (name.empty())
            continue;
        if (std::exchange(first, false) && !drives_.programFolder.empty() && base::sameText(name, programFolderName)) {
            lastHost_ = drives_.programFolder;
            continue;
        }
        if (!lastHost_.ends_with('/'))
            lastHost_ += '/';
        lastHost_ += hostName(name);
    }
    return true;
}

std::string PathMap::host(const Place& place) const
{
    const bool inProgramFolder = beginsInProgramFolder(place);
    std::string path = inProgramFolder ? drives_.programFolder : drives_.root;
    auto next = place.names.begin() + (inProgramFolder ? 1 : 0);
    std::string exact = joinedAsGiven(place);
    if (isThere(exact))
        return exact;

    for (; next != place.names.end(); ++next) {
        const std::string asGiven = joined(path, hostName(*next));
        if (asGiven != exact && isThere(asGiven)) {
            path = asGiven;
            continue;
        }
        const auto found = findName(path, *next);
        if (!found)
            break;
        path = joined(path, *found);
    }
    for (; next != place.names.end(); ++next)
        path = joined(path, hostName(*next));
    return path;
}

std::optional<Place> PathMap::program(std::string_view hostPath) const
{
    Place place;
    auto rest = below(drives_.programFolder, hostPath);
    if (rest)
        place.names.emplace_back(programFolderName);
    else
        rest = below(drives_.root, hostPath);
    if (!rest)
        return std::nullopt;
    while (!rest->empty()) {
        const std::size_t end = std::min(rest->find('/'), rest->size());
        const std::string_view name = rest->substr(0, end);
        if (!name.empty() && name != ".")
            place.names.push_back(programName(name));
        rest->remove_prefix(std::min(end + 1, rest->size()));
    }
    return place;
}

int PathMap::discTracks(wchar_t drive) const
{
    return drive >= L'D' && drives_.discTracks ? drives_.discTracks(drive) : -1;
}

Place PathMap::currentFolder() const
{
    const auto folder = folders_.find(drive_);
    return {drive_, folder == folders_.end() ? std::vector<std::wstring>{} : folder->second};
}

void PathMap::setCurrentFolder(const Place& folder)
{
    folders_[folder.drive] = folder.names;
}

}
