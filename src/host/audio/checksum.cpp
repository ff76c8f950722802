#include "host/audio/checksum.h"

#include <libdeflate.h>

namespace tonquay::host {

std::uint32_t crc32(std::uint32_t before, std::span<const std::byte> bytes)
{
    return libdeflate_crc32(before, bytes.data(), bytes.size());
}

}
