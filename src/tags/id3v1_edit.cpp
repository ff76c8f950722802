#include "tags/id3v1_edit.h"

#include "base/text.h"
#include "tags/id3v1_layout.h"

#include <algorithm>
#include <string>

namespace tonquay::tags {

namespace {

bool hasTrack(const Id3v1Block& block)
{
    return block[id3v1::zero] == std::byte{0} && block[id3v1::track] != std::byte{0};
}

id3v1::Place placeOf(const Id3v1Block& block, Id3v1Text field)
{
    switch (field) {
    case Id3v1Text::title: return id3v1::title;
    case Id3v1Text::artist: return id3v1::artist;
    case Id3v1Text::album: return id3v1::album;
    case Id3v1Text::year: return id3v1::year;
    case Id3v1Text::comment: break;
    }
    return hasTrack(block) ? id3v1::comment : id3v1::longComment;
}

}

bool isId3v1Block(std::span<const std::byte> bytes)
{
    return bytes.size() == id3v1Bytes && std::ranges::equal(bytes.first(id3v1::marker.size()), id3v1::marker);
}

Id3v1Block emptyId3v1Block()
{
    Id3v1Block block{};
    std::ranges::copy(id3v1::marker, block.begin());
    setId3v1Genre(block, noId3v1Genre);
    return block;
}

std::size_t id3v1Room(const Id3v1Block& block, Id3v1Text field)
{
    return placeOf(block, field).width;
}

void setId3v1Text(Id3v1Block& block, Id3v1Text field, std::wstring_view text)
{
    const id3v1::Place place = placeOf(block, field);
    std::string bytes = base::windows1252(text.substr(0, place.width));
    bytes.resize(place.width, '\0');
    std::ranges::transform(bytes, block.begin() + static_cast<std::ptrdiff_t>(place.offset),
                           [](char c) { return static_cast<std::byte>(c); });
}

void setId3v1Track(Id3v1Block& block, std::uint8_t track)
{
    if (track == 0 && !hasTrack(block))
        return;
    block[id3v1::zero] = std::byte{0};
    block[id3v1::track] = std::byte{track};
}

void setId3v1Genre(Id3v1Block& block, std::uint8_t genre)
{
    block[id3v1::genre] = std::byte{genre};
}

}
