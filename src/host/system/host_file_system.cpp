#include "host/system/host_file_system.h"

#include "base/text.h"
#include "host/posix/descriptor.h"
#include "host/posix/folder.h"
#include "host/system/gathered_file.h"
#include "host/system/pattern.h"
#include "host/system/replaced_file.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

using base::Failure;
using base::Status;

namespace {

std::optional<struct stat> look(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

bool isFolder(const std::string& path)
{
    const auto status = look(path);
    return status && S_ISDIR(status->st_mode);
}

bool ownerMayNotWrite(const struct stat& status)
{
    return (status.st_mode & S_IWUSR) == 0;
}

Failure refused(const std::string& where, const char* text)
{
    return {Failure::Kind::refused, where, text};
}

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
    auto host = locate(path);
    if (!host)
        return host;
    const auto status = look(*host);
    if (!status)
        return systemFailure(*host, "found", errno);
    if (S_ISDIR(status->st_mode))
        return Failure{Failure::Kind::notFound, *host, "is a folder"};
    return host;
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
    const auto host = locateFile(path);
    const auto status = host ? look(*host) : std::nullopt;
    return status ? status->st_size : 0;
}

base::Result<std::chrono::local_seconds> HostFileSystem::lastChange(std::wstring_view path)
{
    const auto host = locateFile(path);
    if (!host)
        return host.failure();
    const auto status = look(*host);
    if (!status)
        return systemFailure(*host, "looked at", errno);
    std::tm local{};
    localtime_r(&status->st_mtime, &local);
    // Its fields counted as if there were no time zones give the time on the wall.
    return std::chrono::local_seconds(std::chrono::seconds(timegm(&local)));
}

bool HostFileSystem::isReadOnly(std::wstring_view path)
{
    const auto host = locateFile(path);
    const auto status = host ? look(*host) : std::nullopt;
    return status && ownerMayNotWrite(*status) && !cleared_.contains(*host);
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
    const auto host = locateFile(path);
    if (!host)
        return host.failure();
    if (const auto status = look(*host); status && ownerMayNotWrite(*status) && !cleared_.contains(*host))
        return refused(*host, "is read-only");
    if (held_.removeAtEnd(*host))
        return {};
    if (unlink(host->c_str()) != 0)
        return systemFailure(*host, "deleted", errno);
    cleared_.erase(*host);
    return {};
}

Status HostFileSystem::rename(std::wstring_view from, std::wstring_view to)
{
    const auto source = locateFile(from);
    auto target = locate(to);
    if (!source)
        return source.failure();
    if (!target)
        return target.failure();
    if (held_.awaited(*source))
        return refused(*source, "is about to be opened by a program that was started with it");
    if (*source == *target) {
        // The same file under another case: the look-up found the file itself, the new name is the one that was given.
        target = target->substr(0, target->rfind('/') + 1) + hostName(map_.place(to)->names.back());
    } else if (auto may = mayBeWritten(*target); !may) {
        return may;
    }
    if (::rename(source->c_str(), target->c_str()) != 0) {
        if (errno != EXDEV)
            return systemFailure(*target, "made by renaming", errno);
        if (auto copied = replaceByCopy(*source, *target); !copied)
            return copied;
        if (unlink(source->c_str()) != 0)
            return systemFailure(*source, "deleted after copying", errno);
    }
    cleared_.erase(*source);
    cleared_.erase(*target);
    return {};
}

Status HostFileSystem::copy(std::wstring_view from, std::wstring_view to)
{
    const auto source = locateFile(from);
    const auto target = locate(to);
    if (!source)
        return source.failure();
    if (!target)
        return target.failure();
    if (auto may = mayBeWritten(*target); !may)
        return may;
    const auto before = look(*source);
    const auto there = look(*target);
    if (before && there && before->st_dev == there->st_dev && before->st_ino == there->st_ino)
        return Failure{Failure::Kind::invalid, *target, "is the file itself"};
    if (before && !S_ISREG(before->st_mode))
        return Failure{Failure::Kind::unreadable, *source, "is no ordinary file"};
    auto done = replaceByCopy(*source, *target);
    if (done)
        cleared_.erase(*target);
    return done;
}

Status HostFileSystem::replace(std::wstring_view from, std::wstring_view to)
{
    const auto source = locateFile(from);
    const auto target = locateFile(to);
    if (!source)
        return source.failure();
    if (!target)
        return target.failure();
    if (held_.awaited(*source))
        return refused(*source, "is about to be opened by a program that was started with it");
    if (auto may = mayBeWritten(*target); !may)
        return may;
    const auto before = look(*source);
    const auto there = look(*target);
    if (before && there && before->st_dev == there->st_dev && before->st_ino == there->st_ino)
        return Failure{Failure::Kind::invalid, *target, "is the file itself"};
    auto done = replaceByMove(*source, *target, there ? there->st_mode | S_IWUSR : 0);
    if (done) {
        cleared_.erase(*source);
        cleared_.erase(*target);
    }
    return done;
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
