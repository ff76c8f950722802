#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tonquay::encode {

/// The rates that `bitrateIndex` chooses from, in bits per second. Each is a whole number of kilobits (of 1000 bits).
inline constexpr std::array<std::int32_t, 14> bitrates{32000,  40000,  48000,  56000,  64000,  80000,  96000,
                                                       112000, 128000, 160000, 192000, 224000, 256000, 320000};

/// The chosen rate, or nothing for an index outside the list: such a one comes from a settings file that was edited.
constexpr std::optional<std::int32_t> bitsPerSecond(std::int32_t bitrateIndex)
{
    if (bitrateIndex < 0 || static_cast<std::size_t>(bitrateIndex) >= bitrates.size())
        return std::nullopt;
    return bitrates[static_cast<std::size_t>(bitrateIndex)];
}

}
