#pragma once

#include "base/result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// Sizes as an ID3v2 tag stores them: 28 bits in four bytes of seven bits each, the most significant first.
namespace tonquay::tags {

using SizeBytes = std::array<std::byte, 4>;

/// The lowest 28 bits of a value in four groups of seven; the top bit of each byte is clear. 200 is 00 00 01 48.
SizeBytes LongToByte(std::int32_t value);

/// The other way. Bytes are not masked: one with its top bit set adds all of its value, so that 00 00 00 FF is 255.
/// The largest result is 538984575.
std::int32_t ByteToLong(std::span<const std::byte, 4> bytes);

enum class ShiftDirection : std::int16_t { left = 1, right = 2 };

/// `value` times 2 to the power of `count` (left), or divided by it and cut towards 0 (right). Any other direction
/// gives 0. Fails when the result needs more than 32 signed bits.
base::Result<std::int32_t> Shift(std::int32_t value, std::int16_t count, ShiftDirection direction);

}
