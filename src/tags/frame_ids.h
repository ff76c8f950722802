#pragma once

#include <cstdint>
#include <string_view>

/// The frames of an ID3v2.3 tag by name. Twelve are served; of the others only the names are known.
namespace tonquay::tags {

/// The frames that are served, by the number that they are asked for with.
enum class FrameValueID : std::int32_t {
    track = 1,      ///< "TRCK"
    title,          ///< "TIT2"
    artist,         ///< "TPE1"
    album,          ///< "TALB"
    year,           ///< "TYER"
    genre,          ///< "TCON"
    comment,        ///< "COMM"
    composer,       ///< "TCOM"
    originalArtist, ///< "TOPE"
    copyright,      ///< "TCOP"
    webLink,        ///< "WXXX"
    encodedBy,      ///< "TENC"
};

/// What the body of a frame looks like.
enum class FrameKind {
    text = 1,  ///< encoding, text
    web,       ///< encoding, description, link
    comment,   ///< encoding, language, description, text
    notServed, ///< a tag that is read loses it
};

/// The four characters of a frame; empty for a number outside 1 to 12.
std::wstring_view GetFrameIDString(FrameValueID id);

/// Names are compared as they stand, capitals included.
FrameKind GetFrameKind(std::wstring_view identifier);

}
