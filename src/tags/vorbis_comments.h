#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <string_view>

namespace tonquay::tags {

/// True when an Ogg Vorbis file carries a comment with something behind its "=", whoever wrote it: what a user would
/// lose if all comments were replaced. An encoder's note of itself is one.
///
/// The pages (RFC 3533) of the file's first Vorbis stream are walked and its comment header (Vorbis I, section 5) is
/// read, as far as it goes; bytes in front of the first page and between pages are passed over. False for a file
/// without such a stream, whatever other sound is in it, and for one that cannot be read, which leaves a line. The file
/// is only read.
bool hasVorbisComments(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path);

}
