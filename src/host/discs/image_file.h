#pragma once

#include "host/discs/sound_file.h"
#include "host/posix/descriptor.h"

#include "base/result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace tonquay::host {

/// One file that holds parts of a disc, open for reading: raw bytes, or sound that is decoded.
class ImageFile {
public:
    /// Fails for what is no plain file, cannot be opened, or is no sound file of a disc when `sound` is wanted.
    static base::Result<ImageFile> open(const std::filesystem::path& path, bool sound);

    /// Bytes, of a sound file those of its sound. As it was when the file was opened.
    std::int64_t length() const { return length_; }
    bool isSound() const { return sound_.has_value(); }
    const std::string& path() const { return path_; }

    /// Reads from `offset` on. Returns the bytes written: fewer than `buffer` holds when there are no more, or no more
    /// that can be read.
    std::size_t read(std::int64_t offset, std::span<std::byte> buffer);

    /// Bytes of a raw file now; 0 when that cannot be told.
    std::int64_t lengthNow() const;

    /// False when the file was deleted, renamed or replaced. Costs two calls to the system.
    bool isStillThere() const;

    /// The whole of a file of at most `most` bytes. Looks at its length before it reads.
    static base::Result<std::string> readAll(const std::filesystem::path& path, std::size_t most);

private:
    ImageFile(Descriptor descriptor, std::string path) : descriptor_(std::move(descriptor)), path_(std::move(path)) {}

    static base::Result<ImageFile> openPlain(const std::filesystem::path& path);

    Descriptor descriptor_; ///< before sound_, which reads from it
    std::string path_;
    std::int64_t length_ = 0;
    std::optional<SoundFile> sound_;
};

}
