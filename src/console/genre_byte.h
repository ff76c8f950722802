#pragma once

#include "base/result.h"
#include "platform/file_system.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Genres of MP3 tags. A tag holds a number of a fixed table, and the tagger goes by the first letters of the disc's
/// genre: "Blues" becomes "R&B". Who names a genre of the table on the command line means that one.
namespace tonquay::console {

/// The number of a genre that is in the table, in either of its spellings and in any case.
std::optional<std::uint8_t> genreNumber(std::wstring_view genre);

/// One sentence when MP3 files cannot carry a disc's genre, with what they carry instead; nothing when they can or when
/// there is none.
std::optional<std::string> genreRemark(std::wstring_view genre);

/// Puts the number into the tag at the end of a file and leaves every other byte. Fails when there is no such tag.
base::Status setGenreByte(platform::FileSystem& files, std::wstring_view path, std::uint8_t genre);

}
