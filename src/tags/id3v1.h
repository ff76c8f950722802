#pragma once

#include "base/result.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/tag_state.h"
#include "tags/tagger_options.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// ID3v1 (with the track number of ID3v1.1): a block of 128 bytes that ends a file.
///
///     0 "TAG"   3 title (30)   33 artist (30)   63 album (30)   93 year (4)   97 comment (28)
///     125 zero  126 track      127 genre
///
/// One byte a character in Windows-1252; a character that it does not have is stored as "?". Texts are filled up with
/// NULs. A comment of the older layout runs over all 30 bytes up to the genre; it is taken as 28, with no track.
namespace tonquay::tags {

inline constexpr std::size_t id3v1Bytes = 128;

/// From here on a file is looked into. It is one byte short of a block; the place of a block before such a file's start
/// is then found out by the seek.
inline constexpr std::int64_t id3v1LeastLength = 127;

using Id3v1Block = std::array<std::byte, id3v1Bytes>;

/// Sets the fields from TagInfo, cut to their widths. Fails when track or genre is no number from 0 to 255; the fields
/// that come before the number in the state are set by then. An empty track or genre is 0.
base::Status fieldsFromTagInfo(TagState& state, COptions& options);

/// The block for the fields as they are.
Id3v1Block id3v1Block(const Id3v1Fields& fields);

/// Takes the values of a block into the fields, as far as they are still blank there, and from the fields into
/// TagInfo. False, and nothing is changed, for bytes that are no block.
bool takeId3v1Block(std::span<const std::byte> block, TagState& state);

enum class BlockMarker {
    wanted, ///< a block is one that begins with "TAG"
    assumed ///< whatever stands at the place of a block is one
};

/// The same for the block at the end of a file of `length` bytes that is open. False when there is none, as in a file
/// of fewer than 127 bytes. Fails when the file is shorter by now than it was, and when the marker is wanted for a
/// length of 127, since its place lies before the file.
base::Result<bool> readId3v1Block(platform::BinaryFile& file, std::int64_t length, TagState& state,
                                  BlockMarker blockMarker = BlockMarker::wanted);

/// Writes TagInfo into the file's block; a file without one grows by 128 bytes. The rest of the file is not touched,
/// and a read-only file is writable afterwards.
///
/// Whatever fails ends it with a line, and the caller is not told. A missing or empty file, a folder and a file of
/// 127 bytes get no tag. A track or genre that does not fit into a byte is found out when a new block has begun: its
/// "TAG" stays at the end of the file.
void WriteId3v1Tag(platform::FileSystem& files, platform::Diagnostics& log, COptions& options, TagState& state,
                   std::wstring_view path);

}
