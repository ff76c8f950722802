#include "host/wma/asf_header.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tonquay::host::asf {

namespace {

/// 8CABDCA1-A947-11CF-8EE4-00C00C205365, as it lies in a file.
constexpr std::array<unsigned char, 16> fileProperties{0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                                       0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};

// Places in that object.
constexpr std::size_t playDuration = 64;
constexpr std::size_t sendDuration = 72;
constexpr std::size_t preroll = 80; // in milliseconds
constexpr std::size_t flags = 88;
constexpr std::size_t objectBytes = 104;

std::optional<std::span<std::byte>> find(std::span<std::byte> header)
{
    const auto id = std::as_bytes(std::span(fileProperties));
    const auto found = std::search(header.begin(), header.end(), id.begin(), id.end());
    const auto rest = header.subspan(static_cast<std::size_t>(found - header.begin()));
    return rest.size() < objectBytes ? std::nullopt : std::optional(rest.first(objectBytes));
}

std::uint64_t read(std::span<const std::byte> object, std::size_t offset)
{
    std::uint64_t value = 0;
    for (std::size_t i = 8; i-- > 0;)
        value = value << 8 | std::to_integer<std::uint64_t>(object[offset + i]);
    return value;
}

void write(std::span<std::byte> object, std::size_t offset, std::uint64_t value)
{
    for (std::size_t i = 0; i < 8; ++i, value >>= 8)
        object[offset + i] = static_cast<std::byte>(value & 0xFF);
}

}

bool setBroadcast(std::span<std::byte> header, bool broadcast)
{
    constexpr std::byte broadcastFlag{1};
    const auto object = find(header);
    if (!object)
        return false;
    std::byte& lowest = (*object)[flags];
    lowest = broadcast ? lowest | broadcastFlag : lowest & ~broadcastFlag;
    return true;
}

bool setPlayTime(std::span<std::byte> header, std::int64_t time)
{
    constexpr std::uint64_t unitsPerMs = 10000;
    const auto object = find(header);
    if (!object)
        return false;
    write(*object, playDuration, static_cast<std::uint64_t>(time) + read(*object, preroll) * unitsPerMs);
    write(*object, sendDuration, static_cast<std::uint64_t>(time));
    return true;
}

}
