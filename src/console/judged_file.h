#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tonquay::console {

/// A finished file that a verdict looks at. Opened once, so that what is asked of it is asked of one file; only read,
/// and never waited for when a pipe or a device stands under its name.
class JudgedFile {
public:
    explicit JudgedFile(const std::string& hostPath);
    ~JudgedFile();
    JudgedFile(const JudgedFile&) = delete;
    JudgedFile& operator=(const JudgedFile&) = delete;

    /// Why there is nothing to look at, as a short sentence without the name; empty for a plain file that can be read.
    const std::string& problem() const { return problem_; }

    std::int64_t length() const { return length_; }

    /// When its contents were written last.
    std::chrono::system_clock::time_point changed() const { return changed_; }

    /// Fills the buffer. False when the file ends in it, and on an error.
    bool readAt(std::int64_t offset, std::span<std::byte> buffer) const;

private:
    int descriptor_;
    std::int64_t length_ = 0;
    std::chrono::system_clock::time_point changed_{};
    std::string problem_{};
};

/// The time that a file in `folder` would get if it were written now, as JudgedFile::changed() tells it.
///
/// File systems keep time in their own way: some in steps of 1 or 2 seconds, rounded down, all others by a clock that
/// lags some milliseconds behind the system's, and those on other machines by the clock there. So a file is made, asked
/// and removed. What is written later on that file system is never older than this. Where no file can be made, it is
/// the system's time 2 seconds ago, the longest step there is.
std::chrono::system_clock::time_point fileTimeNow(const std::string& folder);

}
