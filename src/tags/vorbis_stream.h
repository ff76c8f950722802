#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/ogg_packets.h"

#include <optional>
#include <string_view>

namespace tonquay::tags {

/// The first stream of an Ogg file that is Vorbis, in its first packet. The first pages of all streams come before all
/// others (RFC 3533). `window` outlives it.
std::optional<OggPackets> vorbisStream(FileWindow& window);

/// Whether a file has pages of one stream only, from its first to its last.
bool isOneStream(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path);

/// Whether two files have the same Vorbis packets behind their comment headers: the set-up and all of the sound, to the
/// byte. Reads both files whole. False, with a line in the log, when one cannot be read.
bool hasSameVorbisSound(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view left,
                        std::wstring_view right);

}
