#include "tags/id3v2_headers.h"

#include "base/text.h"
#include "tags/tag_bytes.h"

#include <algorithm>

namespace tonquay::tags {

namespace {

constexpr std::array marker{std::byte{'I'}, std::byte{'D'}, std::byte{'3'}};

}

bool TagHeader::isThere() const
{
    return std::ranges::equal(std::span(bytes).first(marker.size()), marker);
}

Id3v2HeaderBytes tagHeaderBytes(std::byte flags, std::int32_t bodySize)
{
    Id3v2HeaderBytes bytes{};
    std::ranges::copy(marker, bytes.begin());
    bytes[3] = std::byte{TagHeader::knownVersion};
    bytes[5] = flags;
    std::ranges::copy(LongToByte(bodySize), bytes.begin() + 6);
    return bytes;
}

FrameHeader ParseFrameHeader(std::span<const std::byte, id3v2HeaderBytes> bytes)
{
    return {base::fromWindows1252(charsOf(bytes.first<4>())), ByteToLong(bytes.subspan<4, 4>()), {bytes[8], bytes[9]}};
}

Id3v2HeaderBytes frameHeaderBytes(const clsFrame& frame)
{
    Id3v2HeaderBytes bytes{};
    const std::string identifier = base::windows1252(frame.FrameID()).substr(0, 4);
    std::ranges::copy(std::as_bytes(std::span(identifier)), bytes.begin());
    std::ranges::copy(LongToByte(frame.FrameSize()), bytes.begin() + 4);
    std::ranges::copy(frame.getFlags(), bytes.begin() + 8);
    return bytes;
}

}
