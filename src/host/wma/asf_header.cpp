#include "host/wma/asf_header.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tonquay::host::asf {

namespace {

/// 8CABDCA1-A947-11CF-8EE4-00C00C205365, as it lies in a file.
constexpr std::array<unsigned char, 16> fileProperties{0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                                       0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};

/// 75B22633-668E-11CF-A6D9-00AA0062CE6C.
constexpr std::array<unsigned char, 16> contentDescription{0x33, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                                           0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};

constexpr std::size_t objectSize = 16; // of every object, and of the header

// Places in the file's properties.
constexpr std::size_t fileSize = 40;
constexpr std::size_t playDuration = 64;
constexpr std::size_t sendDuration = 72;
constexpr std::size_t preroll = 80; // in milliseconds
constexpr std::size_t flags = 88;
constexpr std::size_t propertiesBytes = 104;

// Places in the description: lengths in bytes, then the texts in that order.
constexpr std::size_t titleLength = 24;
constexpr std::size_t descriptionLength = 30;
constexpr std::size_t texts = 34;

using Id = std::array<unsigned char, 16>;

std::optional<std::size_t> placeOf(std::span<const std::byte> header, const Id& id, std::size_t bytes)
{
    const auto wanted = std::as_bytes(std::span(id));
    const auto found = std::search(header.begin(), header.end(), wanted.begin(), wanted.end());
    const auto place = static_cast<std::size_t>(found - header.begin());
    return header.size() - place < bytes ? std::nullopt : std::optional(place);
}

std::optional<std::span<std::byte>> find(std::span<std::byte> header)
{
    const auto place = placeOf(header, fileProperties, propertiesBytes);
    return place ? std::optional(header.subspan(*place, propertiesBytes)) : std::nullopt;
}

std::uint64_t read(std::span<const std::byte> object, std::size_t offset, std::size_t length = 8)
{
    std::uint64_t value = 0;
    for (std::size_t i = length; i-- > 0;)
        value = value << 8 | std::to_integer<std::uint64_t>(object[offset + i]);
    return value;
}

void write(std::span<std::byte> object, std::size_t offset, std::uint64_t value, std::size_t length = 8)
{
    for (std::size_t i = 0; i < length; ++i, value >>= 8)
        object[offset + i] = static_cast<std::byte>(value & 0xFF);
}

/// UTF-16, low byte first, with a NUL behind it.
std::vector<std::byte> wideBytes(std::wstring_view text)
{
    std::vector<std::byte> bytes;
    const auto add = [&bytes](char32_t unit) {
        bytes.push_back(static_cast<std::byte>(unit & 0xFF));
        bytes.push_back(static_cast<std::byte>(unit >> 8 & 0xFF));
    };
    constexpr char32_t firstOfPairs = 0x10000;
    for (const wchar_t character : text) {
        const auto code = static_cast<char32_t>(character);
        if (code >= firstOfPairs) {
            add(0xD800 + ((code - firstOfPairs) >> 10 & 0x3FF));
            add(0xDC00 + ((code - firstOfPairs) & 0x3FF));
        } else {
            add(code);
        }
    }
    add(0);
    return bytes;
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

std::size_t putDescription(std::vector<std::byte>& header, std::wstring_view text)
{
    constexpr std::size_t longest = 0xFFFF;
    const auto place = placeOf(header, contentDescription, texts);
    const std::vector<std::byte> bytes = wideBytes(text);
    if (!place || bytes.size() > longest || read(header, *place + descriptionLength, 2) != 0)
        return 0;
    std::size_t behind = *place + texts;
    for (std::size_t field = titleLength; field < descriptionLength; field += 2)
        behind += read(header, *place + field, 2);
    if (behind > header.size())
        return 0;
    write(header, *place + descriptionLength, bytes.size(), 2);
    write(header, *place + objectSize, read(header, *place + objectSize) + bytes.size());
    write(header, objectSize, read(header, objectSize) + bytes.size());
    header.insert(header.begin() + static_cast<std::ptrdiff_t>(behind), bytes.begin(), bytes.end());
    if (const auto properties = find(header); properties && read(*properties, fileSize) != 0)
        write(*properties, fileSize, read(*properties, fileSize) + bytes.size());
    return bytes.size();
}

}
