#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tonquay::host {

/// CRC-32 as zip, gzip and PNG count it; 0 before the first byte. `before` is that of all bytes before these.
std::uint32_t crc32(std::uint32_t before, std::span<const std::byte> bytes);

}
