#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tonquay::console {

/// The canonical 44 bytes at the start of a WAV file (RIFF), as they were read.
struct WavHeader {
    static constexpr std::size_t size = 44;
    static constexpr std::size_t dataSizeOffset = 40;

    std::array<std::byte, size> bytes{};

    /// The little-endian number of `length` bytes at `offset`.
    std::uint32_t number(std::size_t offset, std::size_t length) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = length; i > 0; --i)
            value = value << 8 | std::to_integer<std::uint32_t>(bytes[offset + i - 1]);
        return value;
    }

    /// The four letters of a mark stand there.
    bool has(std::size_t offset, std::string_view mark) const
    {
        return std::memcmp(&bytes[offset], mark.data(), mark.size()) == 0;
    }
};

}
