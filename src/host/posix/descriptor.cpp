#include "host/posix/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace tonquay::host {

namespace {

base::Failure::Kind kindOf(int error)
{
    using enum base::Failure::Kind;
    switch (error) {
    case ENOENT:
    case ENOTDIR: return notFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
    case EBUSY:
    case EEXIST:
    case EISDIR: return refused;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return full;
    case EIO:
    case ENXIO: return unreadable;
    case EINVAL:
    case ENAMETOOLONG:
    case EILSEQ:
    case ELOOP:
    case ENOEXEC: return invalid;
    case ENOSYS:
    case EOPNOTSUPP: return unavailable;
    default: return other;
    }
}

}

Descriptor::~Descriptor()
{
    if (fd_ >= 0)
        ::close(fd_);
}

base::Status Descriptor::close(const std::string& where)
{
    // Linux has closed it whatever the answer is; a second try would hit somebody else's file.
    if (fd_ >= 0 && ::close(std::exchange(fd_, -1)) != 0 && errno != EINTR)
        return systemFailure(where, "written", errno);
    return {};
}

base::Failure systemFailure(const std::string& where, std::string_view action, int error)
{
    return {kindOf(error), where, "cannot be " + std::string(action) + ": " + std::generic_category().message(error)};
}

base::Status writeAt(int fd, std::span<const std::byte> bytes, std::int64_t offset, const std::string& where,
                     std::size_t& done)
{
    done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            pwrite(fd, bytes.data() + done, bytes.size() - done, offset + static_cast<std::int64_t>(done));
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            return systemFailure(where, "written", count == 0 ? ENOSPC : errno);
    }
    return {};
}

namespace {

/// Fills `buffer` from `offset` on; `done` tells how far. The errno value of what came between, 0 at the file's end.
int fill(int fd, std::span<std::byte> buffer, std::int64_t offset, std::size_t& done)
{
    done = 0;
    while (done < buffer.size()) {
        const ssize_t count =
            pread(fd, buffer.data() + done, buffer.size() - done, offset + static_cast<std::int64_t>(done));
        if (count == 0)
            break;
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

}

base::Result<std::size_t> readAt(int fd, std::span<std::byte> buffer, std::int64_t offset, const std::string& where)
{
    std::size_t done = 0;
    if (const int error = fill(fd, buffer, offset, done); error != 0)
        return systemFailure(where, "read", error);
    return done;
}

std::size_t readWhatIsThere(int fd, std::span<std::byte> buffer, std::int64_t offset)
{
    std::size_t done = 0;
    fill(fd, buffer, offset, done);
    return done;
}

base::Result<std::string> readToEnd(int fd, std::size_t limit, const std::string& where)
{
    // The size that the file claims is not asked: it may be none (as in /proc), or grow meanwhile.
    constexpr std::size_t step = 65536;
    std::string bytes;
    for (;;) {
        const std::size_t had = bytes.size();
        bytes.resize(std::min(had + std::max(step, had), limit + 1));
        const ssize_t count = ::read(fd, bytes.data() + had, bytes.size() - had);
        const int error = errno;
        bytes.resize(had + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count < 0 && error != EINTR)
            return systemFailure(where, "read", error);
        if (bytes.size() > limit)
            return base::Failure{base::Failure::Kind::invalid, where,
                                 "is larger than the " + std::to_string(limit) + " bytes that it may have"};
        if (count == 0)
            return bytes;
    }
}

}
