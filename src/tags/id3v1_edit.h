#pragma once

#include "tags/id3v1.h"

#include <cstdint>
#include <span>
#include <string_view>

/// Single fields of an ID3v1 block (id3v1.h), each changed without a look at the others: what is not named stays as its
/// bytes are.
namespace tonquay::tags {

enum class Id3v1Text { title, artist, album, year, comment };

inline constexpr std::uint8_t noId3v1Genre = 255;

/// The 128 bytes begin like a block.
bool isId3v1Block(std::span<const std::byte> bytes);

/// A block in which nothing is said: texts empty, no track, no genre.
Id3v1Block emptyId3v1Block();

/// How many characters of a text the block has room for: 30, of a year 4, of a comment 28 beside a track number.
std::size_t id3v1Room(const Id3v1Block& block, Id3v1Text field);

/// Puts a text in, cut to its room and filled up with NULs. A character that Windows-1252 does not have becomes "?".
void setId3v1Text(Id3v1Block& block, Id3v1Text field, std::wstring_view text);

/// Puts a track number in, 0 for none. It needs the last two bytes of a comment of the older layout, which is cut for
/// it; a block without a track stays as it is when there is to be none.
void setId3v1Track(Id3v1Block& block, std::uint8_t track);

/// Puts the number of a genre in, `noId3v1Genre` for none.
void setId3v1Genre(Id3v1Block& block, std::uint8_t genre);

}
