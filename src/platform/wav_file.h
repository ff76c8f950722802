#pragma once

#include "base/result.h"
#include "base/wav_header.h"
#include "platform/file_system.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tonquay::platform {

/// A RIFF WAVE file in the making: the canonical 44-byte header, then the sound.
///
/// Its header tells of no sound until finish(), so a file whose writing was broken off never looks whole.
class WavFile {
public:
    /// `file` is open and at its first byte.
    explicit WavFile(std::unique_ptr<BinaryFile> file) : file_(std::move(file)) {}

    [[nodiscard]] base::Status writeHeader(const base::WaveFormat& format);
    [[nodiscard]] base::Status write(std::span<const std::byte> sound);

    /// Writes both sizes for that many bytes of sound, and closes. A gathered write that failed is reported before any
    /// size vouches for it. No other call may follow.
    [[nodiscard]] base::Status finish(std::int64_t soundBytes);

private:
    std::unique_ptr<BinaryFile> file_;
};

}
