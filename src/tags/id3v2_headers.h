#pragma once

#include "tags/id3v2_enums.h"
#include "tags/id3v2_frame.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// The two headers of ID3v2.3, ten bytes each.
///
///     tag    0 "ID3"        3 version  4 revision  5 flags  6 size of what follows
///     frame  0 identifier (4)          4 size of the body   8 flags (2)
///
/// Both sizes are in groups of seven bits (id3v2_enums.h). For a frame that is this system's own form: ID3v2.3 has a
/// plain number there, which is the same up to 127 bytes and another from 128 on.
namespace tonquay::tags {

inline constexpr std::size_t id3v2HeaderBytes = 10;

using Id3v2HeaderBytes = std::array<std::byte, id3v2HeaderBytes>;

/// The first ten bytes of a file, a tag's header or not; zeros where the file ends before.
struct TagHeader {
    static constexpr std::uint8_t knownVersion = 3;

    Id3v2HeaderBytes bytes{};

    /// Begins with "ID3". The rest means nothing when it does not.
    bool isThere() const;
    std::uint8_t version() const { return std::to_integer<std::uint8_t>(bytes[3]); }
    std::byte flags() const { return bytes[5]; }
    /// Of the tag's body, as the file claims; 0 to 538984575.
    std::int32_t bodySize() const { return ByteToLong(std::span(bytes).last<4>()); }
};

/// The header of version 3.0 in front of a body of `bodySize` bytes.
Id3v2HeaderBytes tagHeaderBytes(std::byte flags, std::int32_t bodySize);

struct FrameHeader {
    std::wstring identifier; ///< four characters
    std::int32_t size = 0;   ///< as the file claims; 0 to 538984575
    clsFrame::Flags flags{};
};

FrameHeader ParseFrameHeader(std::span<const std::byte, id3v2HeaderBytes> bytes);
Id3v2HeaderBytes frameHeaderBytes(const clsFrame& frame);

}
