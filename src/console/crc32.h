#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tonquay::console {

/// The CRC-32 of zip and PNG (ISO 3309), block by block: start with 0 and hand the last value on.
std::uint32_t crc32(std::uint32_t before, std::span<const std::byte> bytes);

}
