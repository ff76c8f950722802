#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tonquay::tags {

/// The bytes of an open file, one at a time, by their positions; the first byte is at position 1. The file is read in
/// blocks of 4 KiB, and the block of the last byte that was asked for is kept.
class FileBytes {
public:
    /// Both outlive this. Whoever else moves about in the file does no harm; what they write may go unseen.
    FileBytes(platform::BinaryFile& file, platform::Diagnostics& log) : file_(file), log_(log) {}

    /// Nothing for a position where the file has no byte, or that cannot be read; the latter leaves a line.
    std::optional<std::uint8_t> at(std::int64_t position)
    {
        if (!holds(position) && !load(position))
            return std::nullopt;
        return std::to_integer<std::uint8_t>(block_[static_cast<std::size_t>(position - first_)]);
    }

    /// The bytes from a position on that are at hand without another look into the file: one at least where there is
    /// one. They hold until the next call.
    std::span<const std::byte> from(std::int64_t position)
    {
        if (!holds(position) && !load(position))
            return {};
        return std::span(block_)
            .first(static_cast<std::size_t>(count_))
            .subspan(static_cast<std::size_t>(position - first_));
    }

private:
    bool holds(std::int64_t position) const { return position >= first_ && position - first_ < count_; }
    bool load(std::int64_t position);

    platform::BinaryFile& file_;
    platform::Diagnostics& log_;
    std::array<std::byte, 4096> block_{};
    std::int64_t first_ = 1; ///< position of the block's first byte
    std::int64_t count_ = 0; ///< how many bytes of the block there are
};

/// Bytes of which the one before stays in use where there is no other; at first that is 0.
class LastingByte {
public:
    explicit LastingByte(FileBytes& bytes) : bytes_(bytes) {}

    std::uint8_t at(std::int64_t position) { return byte_ = bytes_.at(position).value_or(byte_); }

private:
    FileBytes& bytes_;
    std::uint8_t byte_ = 0;
};

}
