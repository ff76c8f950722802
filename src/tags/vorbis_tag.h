#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::tags {

/// What was found of an Ogg Vorbis file's comments; a field that was not found is empty or 0.
struct VorbisTag {
    std::wstring Title{};
    std::wstring Artist{};
    std::wstring Album{};
    std::wstring Genre{};
    std::wstring Date{};
    std::wstring Comment{};
    std::int16_t TrackNumber = 0;
    std::wstring EncodedUsing{};
    std::wstring Reserved{}; ///< stays empty

    bool operator==(const VorbisTag&) const = default;
};

/// Looks for the comments of an Ogg Vorbis file (Vorbis I, section 5) by a few marks among its bytes; pages are not
/// walked, and no length is decoded.
///
/// Only a comment packet whose vendor text has 29 or 32 bytes is known, as those of the encoders before 2010, and it
/// must begin in the first 2048 bytes, with the setup packet beginning no more than 2048 bytes behind it. Files of
/// today's encoders have another vendor text: nothing is found in them. hasVorbisComments() tells what is really there.
///
/// A key is found in any case, and also inside another value; the first place counts. A value ends at the length of
/// the next comment as long as that is from 1 to 255 (a 0 takes its last character), or where the setup packet follows
/// at once; otherwise it runs on into what comes behind it. Values are UTF-8, or Windows-1252 where they are not
/// well-formed.
///
/// The file is only read, to its end when nothing is found. What fails leaves a line, and the fields found so far.
VorbisTag ReadVorbisTag(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path);

}
