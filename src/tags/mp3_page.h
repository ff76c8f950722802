#pragma once

#include "tags/tag_fields.h"
#include "tags/tag_state.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What people are shown of an MP3 file that ReadMp3Info() has read, from the slots of TagInfo alone.
namespace tonquay::tags {

/// The texts of the fields that a tag is edited in. A year of a single character is shown as none, and so is a track
/// below 1. The genre is the one of the number in an ID3v1 tag; the name that an ID3v2 tag has is not shown.
TagFields tagFields(const TagState& state);

/// The text about the file itself, over several lines, each ended by CR LF. `length` is the file's in bytes, `date`
/// that of its last change as people read it.
///
/// The first two lines are always there; of the others each shows what is known. Every file that has a bitrate, a title
/// or an artist counts as one with an ID3v1 tag, and the type of the sound is always the same.
///
///     Size: 3200000 bytes,  Date: Sep-9-2001 3:05pm
///     Type: MPEG 1.0 Layer 3
///     Bitrate: 128 Kbps,  Frequency: 44 KHz
///     Channel Info: Stereo,  VBR Encoding:  No
///     ID3v1 Tag Present, ID3v2 Tag Present
///     Track Time: 3:20
std::wstring fileInformation(const TagState& state, std::int64_t length, std::wstring_view date);

}
