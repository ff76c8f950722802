#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Ogg files byte by byte. Checksums are left out.
namespace tonquay::tags::test {

inline std::string littleEndian(std::uint32_t value)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

/// The vendor text of an encoder, of a length.
inline std::string vendor(std::uint32_t length)
{
    return littleEndian(length) + std::string(length, 'v');
}

/// A comment packet up to its last comment.
inline std::string comments(const std::vector<std::string>& texts, std::uint32_t vendorLength = 29)
{
    std::string bytes = "\3vorbis" + vendor(vendorLength) + littleEndian(static_cast<std::uint32_t>(texts.size()));
    for (const std::string& text : texts)
        bytes += littleEndian(static_cast<std::uint32_t>(text.size())) + text;
    return bytes;
}

inline constexpr int continued = 1;
inline constexpr int first = 2;

/// A page whose lacing says that `bytes` are one packet, or its beginning when a multiple of 255 does not end it.
inline std::string page(int flags, std::uint32_t serial, std::string_view bytes, bool ends = true)
{
    std::string lacing(bytes.size() / 255, '\xFF');
    if (ends)
        lacing += static_cast<char>(bytes.size() % 255);
    std::string head("OggS\0", 5);
    head += static_cast<char>(flags);
    head += std::string(8, '\0') + littleEndian(serial) + std::string(8, '\0');
    return head + static_cast<char>(lacing.size()) + lacing + std::string(bytes);
}

inline const std::string identification = "\1vorbis" + std::string(23, 'i');

}
