#include "host/drives/drive_abilities.h"

namespace tonquay::host {
namespace {

constexpr std::size_t neededBytes = 14;
constexpr std::uint8_t pageCode = 0x2a;

std::uint32_t bigEndian16(std::span<const std::uint8_t> page, std::size_t at)
{
    return static_cast<std::uint32_t>(page[at] << 8 | page[at + 1]);
}

}

std::optional<CapabilitiesPage> parseCapabilitiesPage(std::span<const std::uint8_t> page)
{
    if (page.size() < neededBytes || (page[0] & 0x3f) != pageCode)
        return std::nullopt;
    CapabilitiesPage parsed;
    // The flags are the page's own bytes 2, 4 and 5, each at its place in one number.
    parsed.abilities = static_cast<std::uint32_t>(page[2] & 0x3f) | static_cast<std::uint32_t>(page[4] & 0x70) << 16 |
                       static_cast<std::uint32_t>(page[5] & 0x03) << 24;
    parsed.canLock = (page[6] & 0x01) != 0;
    parsed.locked = (page[6] & 0x02) != 0;
    parsed.canOpen = (page[6] & 0x08) != 0;
    parsed.maxReadSpeed = bigEndian16(page, 8);
    parsed.bufferKb = bigEndian16(page, 12);
    return parsed;
}

}
