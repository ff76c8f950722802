#include "console/judged_file.h"

#include <cerrno>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::console {

namespace {

using Clock = std::chrono::system_clock;

Clock::time_point changeTime(const struct stat& facts)
{
    const auto since = std::chrono::seconds(facts.st_mtim.tv_sec) + std::chrono::nanoseconds(facts.st_mtim.tv_nsec);
    return Clock::time_point(std::chrono::duration_cast<Clock::duration>(since));
}

std::optional<Clock::time_point> timeOfNewFile(const std::string& folder)
{
    std::string name = folder + "/.tonquay-XXXXXX";
    const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    struct stat facts {};
    // Bytes are written, since it is the writing that sets the time.
    const bool known = ::write(descriptor, "t", 1) == 1 && ::fstat(descriptor, &facts) == 0;
    ::close(descriptor);
    ::unlink(name.c_str());
    return known ? std::optional(changeTime(facts)) : std::nullopt;
}

}

JudgedFile::JudgedFile(const std::string& hostPath)
    : descriptor_(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    struct stat facts {};
    if (descriptor_ < 0 && errno == ENOENT)
        problem_ = "the file was not made";
    else if (descriptor_ < 0 || ::fstat(descriptor_, &facts) != 0)
        problem_ = "the file cannot be opened: " + std::generic_category().message(errno);
    else if (S_ISDIR(facts.st_mode))
        problem_ = "a folder stands in its place; move it away";
    else if (!S_ISREG(facts.st_mode))
        problem_ = "this is no file";
    length_ = facts.st_size;
    changed_ = changeTime(facts);
}

JudgedFile::~JudgedFile()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

bool JudgedFile::readAt(std::int64_t offset, std::span<std::byte> buffer) const
{
    while (!buffer.empty()) {
        const ssize_t got = ::pread(descriptor_, buffer.data(), buffer.size(), offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        buffer = buffer.subspan(static_cast<std::size_t>(got));
        offset += got;
    }
    return true;
}

std::chrono::system_clock::time_point fileTimeNow(const std::string& folder)
{
    constexpr std::chrono::seconds longestStep(2);
    return timeOfNewFile(folder).value_or(Clock::now() - longestStep);
}

}
