#include "host/system/replaced_file.h"

#include "host/posix/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <unistd.h>
#include <vector>

namespace tonquay::host {

namespace {

struct Release {
    void operator()(char* text) const { std::free(text); }
};

/// The file that a path means in the end; the path itself while there is none.
std::string followed(const std::string& path)
{
    const std::unique_ptr<char, Release> real(realpath(path.c_str(), nullptr));
    return real != nullptr ? std::string(real.get()) : path;
}

/// Called before a file takes another's name: after a power cut there is the old file or the new, not an empty one.
base::Status onDisk(int file, const std::string& where)
{
    if (fsync(file) != 0 && errno != EINVAL)
        return systemFailure(where, "written", errno);
    return {};
}

/// A new file beside its target, gone again unless it is put in the target's place.
class Draft {
public:
    explicit Draft(std::string target) : target_(std::move(target)) {}
    ~Draft()
    {
        if (!path_.empty())
            unlink(path_.c_str());
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    base::Status open()
    {
        const std::string folder = target_.substr(0, target_.rfind('/') + 1);
        for (int attempt = 0; attempt < 1000; ++attempt) {
            // Short, since the target's own name may be as long as a name can be.
            const std::string path = folder + ".tq" + std::to_string(getpid()) + '-' + std::to_string(attempt);
            file_ = Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
            if (file_) {
                path_ = path;
                return {};
            }
            if (errno != EEXIST)
                break;
        }
        return systemFailure(target_, "written", errno);
    }

    int get() const { return file_.get(); }

    base::Status putInPlace()
    {
        if (auto there = onDisk(file_.get(), target_); !there)
            return there;
        if (auto closed = file_.close(target_); !closed)
            return closed;
        if (rename(path_.c_str(), target_.c_str()) != 0)
            return systemFailure(target_, "replaced", errno);
        path_.clear();
        return {};
    }

private:
    std::string target_;
    std::string path_;
    Descriptor file_;
};

base::Status copyBytes(int from, int to, const std::string& source, const std::string& target)
{
    constexpr std::size_t block = 1 << 20;
    const auto buffer = std::make_unique_for_overwrite<std::byte[]>(block);
    for (std::int64_t place = 0;;) {
        const ssize_t count = read(from, buffer.get(), block);
        if (count == 0)
            return {};
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemFailure(source, "read", errno);
        std::size_t written = 0;
        if (auto done = writeAt(to, {buffer.get(), static_cast<std::size_t>(count)}, place, target, written); !done)
            return done;
        place += count;
    }
}

}

base::Status replaceFile(const std::string& path, std::string_view bytes, mode_t mode)
{
    Draft draft(followed(path));
    if (auto opened = draft.open(); !opened)
        return opened;
    std::size_t written = 0;
    if (auto done = writeAt(draft.get(), std::as_bytes(std::span(bytes)), 0, path, written); !done)
        return done;
    if (mode != 0 && fchmod(draft.get(), mode & 07777) != 0)
        return systemFailure(path, "written", errno);
    return draft.putInPlace();
}

base::Status replaceByCopy(const std::string& from, const std::string& to)
{
    const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!source || fstat(source.get(), &status) != 0)
        return systemFailure(from, "opened", errno);
    Draft draft(followed(to));
    if (auto opened = draft.open(); !opened)
        return opened;
    if (auto copied = copyBytes(source.get(), draft.get(), from, to); !copied)
        return copied;
    const timespec times[2] = {status.st_atim, status.st_mtim};
    if (fchmod(draft.get(), status.st_mode & 0777) != 0 || futimens(draft.get(), times) != 0)
        return systemFailure(to, "written", errno);
    return draft.putInPlace();
}

base::Status replaceByMove(const std::string& from, const std::string& to, mode_t mode)
{
    const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!source)
        return systemFailure(from, "opened", errno);
    if (mode != 0 && fchmod(source.get(), mode & 07777) != 0)
        return systemFailure(from, "given the rights of the old file", errno);
    if (auto there = onDisk(source.get(), from); !there)
        return there;
    const std::string target = followed(to);
    if (rename(from.c_str(), target.c_str()) == 0)
        return {};
    if (errno != EXDEV)
        return systemFailure(target, "replaced", errno);
    if (auto copied = replaceByCopy(from, target); !copied)
        return copied;
    if (unlink(from.c_str()) != 0)
        return systemFailure(from, "deleted after copying", errno);
    return {};
}

}
