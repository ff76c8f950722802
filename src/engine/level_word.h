#pragma once

#include <cstdint>

namespace tonquay::engine {

/// The two channels of a level: left in the low half, right in the high one, each 0 to 32768.
constexpr std::int32_t loWord(std::int32_t level)
{
    return level & 0xFFFF;
}

constexpr std::int32_t hiWord(std::int32_t level)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(level) >> 16);
}

}
