#include "host/system/host_file_system.h"

#include "base/text.h"
#include "host/posix/descriptor.h"
#include "host/posix/folder.h"
#include "host/system/file_status.h"
#include "host/system/gathered_file.h"
#include "host/system/pattern.h"
#include "host/system/replaced_file.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

using base::Failure;
using base::Status;

namespace {

base::Result<Descriptor> openToRead(const std::string& host)
{
    // Not blocking: a pipe without a writer would hold up the program for ever.
    Descriptor file(open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0)
        return systemFailure(host, "opened", errno);
    if (!S_ISREG(status.st_mode))
        return Failure{S_ISDIR(status.st_mode) ? Failure::Kind::notFound : Failure::Kind::unreadable, host,
                       "is no ordinary file"};
    return file;
}

std::wstring discName(int track)
{
    return L"track" + std::wstring(track < 10 ? L"0" : L"") + std::to_wstring(track) + L".cda";
}

bool isFile(const std::string& folder, const dirent& entry)
{
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return entry.d_type != DT_DIR;
    const auto status = look(folder + '/' + entry.d_name);
    return status && !S_ISDIR(status->st_mode);
}

}

HostFileSystem::HostFileSystem(PathMap::Drives drives, HeldFiles& held) : map_(std::move(drives)), held_(held)
{
    // A write past the size that a shell allows its children is to fail like a full disk, not to end the process.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    if (folderExists(platform::programFolder))
        map_.setCurrentFolder({L'C', {L"CDTONQUAY"}});
}

/// The host path of a path on C:, with all but its last name sure to be there only if the caller looks.
base::Result<std::string> HostFileSystem::locate(std::wstring_view path) const
{
    const auto place = map_.place(path);
    if (!place)
        return Failure{Failure::Kind::notFound, base::utf8(path), "is no path"};
    if (place->drive != L'C')
        return Failure{map_.discTracks(place->drive) < 0 ? Failure::Kind::notFound : Failure::Kind::refused,
                       base::utf8(path), "is not on a disk"};
    return map_.host(*place);
}

base::Result<std::string> HostFileSystem::locateFile(std::wstring_view path) const
{
    auto found = findFile(path);
    if (!found)
        return found.failure();
    return std::move(found->host);
}

base::Result<HostFileSystem::FoundFile> HostFileSystem::findFile(std::wstring_view path) const
{
    FoundFile found;
    // Most names are given in their own case; then one look is enough.
    const std::string* const given = map_.asGiven(path);
    if (given != nullptr && stat(given->c_str(), &found.status) == 0) {
        found.host = *given;
    } else {
        auto host = locate(path);
        if (!host)
            return host.failure();
        found.host = std::move(*host);
        if (stat(found.host.c_str(), &found.status) != 0)
            return systemFailure(found.host, "found", errno);
    }
    if (S_ISDIR(found.status.st_mode))
        return Failure{Failure::Kind::notFound, found.host, "is a folder"};
    return found;
}

/// Why a file must not be written or replaced, if so.
Status HostFileSystem::mayBeWritten(const std::string& host)
{
    const auto status = look(host);
    if (status && S_ISDIR(status->st_mode))
        return refused(host, "is a folder");
    if (status && !S_ISREG(status->st_mode))
        return refused(host, "is no ordinary file");
    if (status && ownerMayNotWrite(*status) && !cleared_.contains(host))
        return refused(host, "is read-only");
    if (held_.inUse(host))
        return refused(host, "is in use by a program that was started with it");
    return {};
}

Status HostFileSystem::makeWritable(const std::string& host)
{
    cleared_.erase(host);
    const auto status = look(host);
    if (status && ownerMayNotWrite(*status) && chmod(host.c_str(), (status->st_mode & 07777) | S_IWUSR) != 0)
        return systemFailure(host, "made writable", errno);
    return {};
}

base::Result<std::string> HostFileSystem::readAll(std::wstring_view path, std::size_t limit)
{
    const auto host = locate(path);
    if (!host)
        return host.failure();
    const auto file = openToRead(*host);
    return file ? readToEnd(file->get(), limit, *host) : file.failure();
}

Status HostFileSystem::writeWhole(std::wstring_view path, std::string_view bytes)
{
    const auto host = locate(path);
    if (!host)
        return host.failure();
    if (auto may = mayBeWritten(*host); !may)
        return may;
    const auto status = look(*host);
    auto done = replaceFile(*host, bytes, status ? status->st_mode | S_IWUSR : 0);
    if (done)
        cleared_.erase(*host);
    return done;
}

base::Result<std::unique_ptr<platform::BinaryFile>> HostFileSystem::openBinary(std::wstring_view path)
{
    const auto host = locate(path);
    if (!host)
        return host.failure();
    if (auto may = mayBeWritten(*host); !may)
        return may.failure();
    if (auto made = makeWritable(*host); !made)
        return made.failure();
    Descriptor file(open(host->c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666));
    if (!file)
        return systemFailure(*host, "opened for writing", errno);
    return std::unique_ptr<platform::BinaryFile>(std::make_unique<GatheredFile>(std::move(file), *host));
}

base::Result<std::unique_ptr<platform::BinaryFile>> HostFileSystem::openForReading(std::wstring_view path)
{
    if (const std::string* const given = map_.asGiven(path))
        if (auto file = openToRead(*given))
            return std::unique_ptr<platform::BinaryFile>(std::make_unique<GatheredFile>(std::move(*file), *given));
    const auto host = locate(path);
    if (!host)
        return host.failure();
    auto file = openToRead(*host);
    if (!file)
        return file.failure();
    return std::unique_ptr<platform::BinaryFile>(std::make_unique<GatheredFile>(std::move(*file), *host));
}

bool HostFileSystem::fileExists(std::wstring_view path)
{
    const auto place = map_.place(path);
    if (!place)
        return false;
    if (place->drive != L'C')
        return place->names.size() == 1 && std::ranges::any_of(discNames(place->drive), [&](const std::wstring& name) {
                   return base::sameText(name, place->names.front());
               });
    const auto status = look(map_.host(*place));
    return status && !S_ISDIR(status->st_mode);
}

bool HostFileSystem::folderExists(std::wstring_view path)
{
    const auto place = map_.place(path);
    if (!place)
        return false;
    if (place->drive != L'C')
        return place->names.empty() && map_.discTracks(place->drive) > 0;
    return isFolder(map_.host(*place));
}

std::int64_t HostFileSystem::length(std::wstring_view path)
{
    const auto found = findFile(path);
    return found ? found->status.st_size : 0;
}

base::Result<std::chrono::local_seconds> HostFileSystem::lastChange(std::wstring_view path)
{
    const auto found = findFile(path);
    if (!found)
        return found.failure();
    return wallTime(found->status.st_mtime);
}

bool HostFileSystem::isReadOnly(std::wstring_view path)
{
    const auto found = findFile(path);
    return found && ownerMayNotWrite(found->status) && !cleared_.contains(found->host);
}

Status HostFileSystem::clearAttributes(std::wstring_view path)
{
    const auto host = locateFile(path);
    if (!host)
        return host.failure();
    cleared_.insert(*host);
    return {};
}

Status HostFileSystem::remove(std::wstring_view path)
{
    const auto found = findFile(path);
    if (!found)
        return found.failure();
    const std::string& host = found->host;
    if (ownerMayNotWrite(found->status) && !cleared_.contains(host))
        return refused(host, "is read-only");
    if (held_.removeAtEnd(host))
        return {};
    if (unlink(host.c_str()) != 0)
        return systemFailure(host, "deleted", errno);
    cleared_.erase(host);
    return {};
}

Status HostFileSystem::createFolder(std::wstring_view path)
{
    const auto host = locate(path);
    if (!host)
        return host.failure();
    if (mkdir(host->c_str(), 0777) != 0)
        return systemFailure(*host, "made", errno);
    return {};
}

base::Result<std::vector<std::wstring>> HostFileSystem::list(std::wstring_view folder, std::wstring_view pattern)
{
    std::vector<std::wstring> names;
    if (const auto place = map_.place(folder); place && place->drive != L'C' && folderExists(folder)) {
        names = discNames(place->drive);
        std::erase_if(names, [&](const std::wstring& name) { return !fitsPattern(name, pattern); });
        return names;
    }
    const auto host = locate(folder);
    if (!host)
        return host.failure();
    const OpenFolder open = openFolder(*host);
    if (open == nullptr)
        return systemFailure(*host, "listed", errno);
    while (const dirent* entry = readdir(open.get()))
        if (std::wstring name = programName(entry->d_name); fitsPattern(name, pattern) && isFile(*host, *entry))
            names.push_back(std::move(name));
    std::ranges::sort(names, [](const std::wstring& left, const std::wstring& right) {
        const int order = base::upper(left).compare(base::upper(right));
        return order != 0 ? order < 0 : left < right;
    });
    return names;
}

Status HostFileSystem::changeDrive(std::wstring_view path)
{
    const wchar_t letter = path.empty() ? L'\0' : base::upper(path.front());
    if (letter != L'C' && map_.discTracks(letter) < 0)
        return Failure{Failure::Kind::notFound, base::utf8(path), "names no drive"};
    map_.setCurrentDrive(letter);
    return {};
}

Status HostFileSystem::changeFolder(std::wstring_view path)
{
    auto place = map_.place(path);
    if (place && place->drive == L'C') {
        const std::string host = map_.host(*place);
        if (!isFolder(host))
            return Failure{Failure::Kind::notFound, host, "is no folder"};
        if (access(host.c_str(), X_OK) != 0)
            return systemFailure(host, "entered", errno);
        // Kept in the case that it has, so that what is joined to it reads as the folder is called.
        place = map_.program(host);
    } else if (!place || !folderExists(path)) {
        return Failure{Failure::Kind::notFound, base::utf8(path), "is no folder"};
    }
    map_.setCurrentFolder(*place);
    return {};
}

std::wstring HostFileSystem::currentFolder()
{
    return map_.currentFolder().text();
}

std::string HostFileSystem::hostPath(std::wstring_view path)
{
    const auto host = locate(path);
    return host ? *host : base::utf8(path);
}

std::wstring HostFileSystem::programPath(std::string_view hostPath)
{
    std::error_code error;
    std::filesystem::path path = std::filesystem::absolute(std::filesystem::path(hostPath), error);
    if (hostPath.empty() || error)
        return {};
    const std::string text = path.string();
    if (text.find("/..") != std::string::npos) {
        // A step up from a link leads to where the link points, which only the system knows.
        const auto real = std::filesystem::weakly_canonical(path, error);
        path = error ? path.lexically_normal() : real;
    }
    const auto place = map_.program(path.string());
    return place ? place->text() : std::wstring();
}

std::vector<std::wstring> HostFileSystem::discNames(wchar_t drive) const
{
    std::vector<std::wstring> names;
    const int count = std::min(map_.discTracks(drive), 99);
    for (int track = 1; track <= count; ++track)
        names.push_back(discName(track));
    return names;
}

}
