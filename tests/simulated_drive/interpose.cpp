// The system calls by which programs reach a drive. Each goes on to the system's own for every path and descriptor but
// those of a simulated drive.

#include "drive.h"
#include "next.h"

#include <array>
#include <atomic>
#include <bit>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tonquay::simulated {
namespace {

template <class Function>
Function* next(const char* name)
{
    return std::bit_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// Drives named in SIMULATED_DRIVE, its files separated by colons. A drive once made stays, since descriptors point
/// at it; tests change the variable from one drive to the next.
class Drives {
public:
    Drive* at(const char* path)
    {
        const char* list = std::getenv("SIMULATED_DRIVE");
        if (!path || !list || !*list)
            return nullptr;
        const std::lock_guard guard(mutex_);
        if (list_ != list)
            take(list);
        for (Drive* drive : now_)
            if (drive->device() == path)
                return drive;
        return nullptr;
    }

private:
    void take(const std::string& list)
    {
        list_ = list;
        now_.clear();
        for (std::size_t begin = 0; begin <= list.size();) {
            const std::size_t end = std::min(list.find(':', begin), list.size());
            if (end > begin)
                now_.push_back(made_.emplace_back(std::make_unique<Drive>(list.substr(begin, end - begin))).get());
            begin = end + 1;
        }
    }

    std::mutex mutex_;
    std::string list_;
    std::vector<Drive*> now_;
    std::vector<std::unique_ptr<Drive>> made_;
};

Drive* driveAt(const char* path)
{
    // Never destroyed: other threads may still close files while the program ends.
    static Drives& drives = *std::make_unique<Drives>().release();
    return drives.at(path);
}

// Without a lock: between fork and exec a child closes descriptors, and a lock could be held by a thread it has not.
std::array<std::atomic<Drive*>, 4096> byDescriptor;

Drive* driveOf(int descriptor)
{
    const auto index = static_cast<std::size_t>(descriptor);
    return descriptor >= 0 && index < byDescriptor.size() ? byDescriptor[index].load() : nullptr;
}

int openDrive(Drive& drive)
{
    if (const int error = drive.openError(); error != 0) {
        errno = error;
        return -1;
    }
    const int descriptor = memfd_create("simulated drive", MFD_CLOEXEC);
    const auto index = static_cast<std::size_t>(descriptor);
    if (descriptor >= 0 && index < byDescriptor.size()) {
        byDescriptor[index] = &drive;
        drive.opened();
    }
    return descriptor;
}

int statDrive(Drive& drive, struct stat* status)
{
    if (drive.openError() == ENOENT) {
        errno = ENOENT;
        return -1;
    }
    *status = {};
    status->st_mode = S_IFBLK | 0660;
    status->st_gid = drive.group();
    status->st_rdev = makedev(11, std::hash<std::string>{}(drive.device()) & 0xff);
    status->st_nlink = 1;
    return 0;
}

using Open = int(const char*, int, ...);
using Stat = int(const char*, struct stat*);

}

int nextStat(const char* path, struct stat* status)
{
    static Stat* const real = next<Stat>("stat");
    return real(path, status);
}

}

using namespace tonquay::simulated;

#pragma GCC visibility push(default)

extern "C" {

int open(const char* path, int flags, ...)
{
    if (Drive* drive = driveAt(path))
        return openDrive(*drive);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static Open* const real = next<Open>("open");
    return real(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return open(path, flags, mode);
}

// What fortified programs call instead. The C library has chosen the names.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
int __open_2(const char* path, int flags)
{
    return open(path, flags);
}

int __open64_2(const char* path, int flags)
{
    return open(path, flags);
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

int close(int descriptor)
{
    const auto index = static_cast<std::size_t>(descriptor);
    if (descriptor >= 0 && index < byDescriptor.size())
        if (Drive* drive = byDescriptor[index].exchange(nullptr))
            drive->closed();
    static auto* const real = next<int(int)>("close");
    return real(descriptor);
}

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (Drive* drive = driveOf(descriptor))
        return drive->control(request, argument);
    static auto* const real = next<int(int, unsigned long, ...)>("ioctl");
    return real(descriptor, request, argument);
}

int stat(const char* path, struct stat* status) noexcept
{
    if (Drive* drive = driveAt(path))
        return statDrive(*drive, status);
    return nextStat(path, status);
}

int lstat(const char* path, struct stat* status) noexcept
{
    if (Drive* drive = driveAt(path))
        return statDrive(*drive, status);
    static Stat* const real = next<Stat>("lstat");
    return real(path, status);
}

int access(const char* path, int mode) noexcept
{
    if (Drive* drive = driveAt(path)) {
        errno = drive->openError();
        return errno == 0 ? 0 : -1;
    }
    static auto* const real = next<int(const char*, int)>("access");
    return real(path, mode);
}

char* realpath(const char* path, char* resolved) noexcept
{
    static auto* const real = next<char*(const char*, char*)>("realpath");
    if (!driveAt(path))
        return real(path, resolved);
    if (!resolved)
        return strdup(path);
    // The caller's buffer has room for any path.
    std::memcpy(resolved, path, std::strlen(path) + 1);
    return resolved;
}
}

#pragma GCC visibility pop
