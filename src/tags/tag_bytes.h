#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace tonquay::tags {

/// Bytes as the characters of the same values, for the conversions of base/text.h.
inline std::string charsOf(std::span<const std::byte> bytes)
{
    std::string chars(bytes.size(), '\0');
    std::ranges::transform(bytes, chars.begin(), [](std::byte byte) { return static_cast<char>(byte); });
    return chars;
}

}
