#include "host/posix/descriptor.h"
#include "host/system/file_status.h"
#include "host/system/host_file_system.h"
#include "host/system/replaced_file.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

// How files come under other names: renamed, copied, or put in the place of another.
namespace tonquay::host {

using base::Failure;
using base::Status;

namespace {

bool areOneFile(const struct stat& left, const struct stat& right)
{
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

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
    if (before && there && areOneFile(*before, *there))
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
    if (before && there && areOneFile(*before, *there))
        return Failure{Failure::Kind::invalid, *target, "is the file itself"};
    auto done = replaceByMove(*source, *target, there ? there->st_mode | S_IWUSR : 0);
    if (done) {
        cleared_.erase(*source);
        cleared_.erase(*target);
    }
    return done;
}

}
