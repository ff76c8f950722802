#include "tags/id3v2_enums.h"

#include "base/numbers.h"

#include <cmath>

namespace tonquay::tags {

namespace {

constexpr std::int32_t groupMask = 127;

/// How many bits stand to the right of a group.
constexpr std::int16_t bitsBelow(std::size_t index)
{
    return static_cast<std::int16_t>((3 - index) * 7);
}

}

SizeBytes LongToByte(std::int32_t value)
{
    SizeBytes bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::byte>(*Shift(value, bitsBelow(i), ShiftDirection::right) & groupMask);
    return bytes;
}

std::int32_t ByteToLong(std::span<const std::byte, 4> bytes)
{
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        sum += std::to_integer<std::int32_t>(bytes[i]) << bitsBelow(i);
    return sum;
}

base::Result<std::int32_t> Shift(std::int32_t value, std::int16_t count, ShiftDirection direction)
{
    double shifted = 0;
    if (direction == ShiftDirection::left)
        shifted = std::ldexp(value, count);
    else if (direction == ShiftDirection::right)
        shifted = std::trunc(std::ldexp(value, -count));
    std::int32_t result = 0;
    if (!base::store(shifted, result))
        return base::Failure{base::Failure::Kind::invalid, "Shift", "the result does not fit into 32 bits"};
    return result;
}

}
