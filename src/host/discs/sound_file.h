#pragma once

#include "base/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tonquay::host {

/// A WAVE, AIFF or FLAC file as a run of decoded samples: 16 bits little-endian, left first, 4 bytes a frame. The only
/// place that knows the sound library.
class SoundFile {
public:
    /// Reads from an open file, which must outlive this and whose read position is this one's from now on. `path` is
    /// for messages. Fails unless the file is 44.1 kHz, 16 bit, stereo and one of those kinds.
    static base::Result<SoundFile> open(int descriptor, const std::string& path);

    SoundFile(SoundFile&&) noexcept;
    SoundFile& operator=(SoundFile&&) noexcept;
    ~SoundFile();

    /// Bytes of decoded sound.
    std::int64_t length() const;

    /// Decodes from `offset` on, a multiple of 4. Returns the bytes written: fewer than `buffer` holds at the end, or
    /// where the file cannot be decoded. Cheap when it goes on where the last call ended.
    std::size_t read(std::int64_t offset, std::span<std::byte> buffer);

private:
    class Decoder;
    explicit SoundFile(std::unique_ptr<Decoder> decoder);

    std::unique_ptr<Decoder> decoder_;
};

}
