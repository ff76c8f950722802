#pragma once

#include "base/result.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tonquay::host {

/// An open file descriptor, closed with its owner.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor();

    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

    /// Closes now; what the system could not write is reported here at the latest.
    base::Status close(const std::string& where);

private:
    int fd_ = -1;
};

/// What errno says, as a failure: "PATH: cannot be opened: permission denied" for `action` "opened".
base::Failure systemFailure(const std::string& where, std::string_view action, int error);

/// Writes all of it at `offset`, however many calls that takes. `done` tells how much was written, also on failure.
base::Status writeAt(int fd, std::span<const std::byte> bytes, std::int64_t offset, const std::string& where,
                     std::size_t& done);

/// Fills `buffer` from `offset` on, however many calls that takes. The result is smaller than the buffer only where the
/// file ends.
base::Result<std::size_t> readAt(int fd, std::span<std::byte> buffer, std::int64_t offset, const std::string& where);

/// The same, but what cannot be read ends it like the end of the file does.
std::size_t readWhatIsThere(int fd, std::span<std::byte> buffer, std::int64_t offset);

/// Reads a file to its end; fails when it holds more than `limit` bytes.
base::Result<std::string> readToEnd(int fd, std::size_t limit, const std::string& where);

}
