#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/tag_state.h"
#include "tags/tagger_options.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// What an MP3 file says of itself: an ID3v2.3 tag at its start, or its first frame and the ID3v1 tag at its end.
namespace tonquay::tags {

/// The value of a frame of an ID3v2 tag, empty for one that the tag does not have. The frames are numbered from 1 to
/// 12: TRCK TIT2 TPE1 TALB TYER TCON COMM TCOM TOPE TCOP WXXX TENC.
using Id3v2Values = std::function<std::wstring(int frame)>;

/// Reads the ID3v2 tag of a file.
using Id3v2Reader = std::function<Id3v2Values(std::wstring_view path)>;

/// Reads a file into the state; what was there before is forgotten. The file does not change. What is found decides how
/// much is known afterwards:
///
/// - A file that begins with an ID3v2.3 tag: the slots of the tag's values and a "2" in slot::id3v2. From artist to
///   genre only letters, digits and , - . / are left of each value, the rest are blanks. Nothing is known of the sound,
///   and nothing is read of an ID3v1 tag.
/// - Otherwise a file with a frame that FindFrameSync() finds, and an ID3v1 tag: the stream values, the fields, and the
///   slots from both. slot::id3v2 is "2" when the file begins with an ID3v2 tag of another version or with one longer
///   than the file.
/// - A frame and no ID3v1 tag: the stream values. The slots up to slot::id3v2 are empty. Only a file of fewer than 127
///   bytes, too few for a tag, keeps slot::bitrate and slot::id3v2.
/// - Neither, an empty file, and one that is missing or cannot be read: nothing is known.
///
/// With a Xing header play time and bitrate come from its counts, and are 0 when it does not announce both. A bitrate
/// that does not fit into 16 bits, or that no frames give, is 320; a play time that does not fit stays unknown ("-1",
/// also in its slot). Without such a header the play time is that of the whole file at the first frame's bitrate.
///
/// A mode of 1 or above takes no notice of an ID3v2 tag. Mode 2 takes the end of the file for an ID3v1 tag, also
/// without its "TAG".
///
/// It reads the first 4 KiB and the last 128 bytes; more only to find the end of blanks in a tag, or a frame that
/// begins later. `id3v2` is called for a file of the first sort only.
void ReadMp3Info(platform::FileSystem& files, platform::Diagnostics& log, COptions& options, const Id3v2Reader& id3v2,
                 TagState& state, std::wstring_view path, std::int16_t mode = 0);

/// The same for a file of `length` bytes that is open for reading. `path` is what `id3v2` is called with.
void ReadMp3Info(platform::BinaryFile& file, std::int64_t length, platform::Diagnostics& log, COptions& options,
                 const Id3v2Reader& id3v2, TagState& state, std::wstring_view path, std::int16_t mode = 0);

}
