#pragma once

#include "base/result.h"
#include "platform/file_system.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tonquay::host {

/// Sound that is being recorded, in a file without a name in the system's folder for temporary files: however the
/// program ends, nothing of it is left. A thread of its own writes it down.
///
/// It holds as much as a RIFF WAVE file can tell of, more than six hours. What the disk does not take ends it there.
class Recording {
public:
    /// Fails when no file can be made in that folder, or the system has no thread to give.
    static base::Result<std::unique_ptr<Recording>> start(const std::string& folder);
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// What lets a sound callback put frames in, for as long as it likes; behind the end they go nowhere.
    std::function<void(std::span<const std::byte>)> inlet();

    /// Waits until all that was put in is written, and leaves the last `unwanted` bytes out. Later calls do nothing. A
    /// failure tells why there is less than was put in.
    base::Status end(std::int64_t unwanted = 0);

    /// After end(): bytes of sound.
    [[nodiscard]] std::int64_t soundBytes() const { return soundBytes_; }

    /// After end(): makes a canonical WAV file of it, in place of an older one. On the same file system the recording
    /// itself gets that name, so that takes no time; a copy is made otherwise, and by a second call.
    base::Status save(platform::FileSystem& files, std::wstring_view path);

private:
    struct Work;

public:
    /// For start().
    explicit Recording(std::shared_ptr<Work> work) : work_(std::move(work)) {}

private:
    base::Status writeHeader();
    bool giveName(platform::FileSystem& files, std::wstring_view path);
    base::Status copyTo(platform::FileSystem& files, std::wstring_view path);

    std::shared_ptr<Work> work_;
    bool ended_ = false;
    bool named_ = false;
    std::int64_t soundBytes_ = 0;
};

}
