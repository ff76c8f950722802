#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::tags {

/// True when an Ogg Vorbis file carries a comment with something behind its "=", whoever wrote it: what a user would
/// lose if all comments were replaced. An encoder's note of itself is one.
///
/// The pages (RFC 3533) of the file's first Vorbis stream are walked and its comment header (Vorbis I, section 5) is
/// read, as far as it goes; bytes in front of the first page and between pages are passed over. False for a file
/// without such a stream, whatever other sound is in it, and for one that cannot be read, which leaves a line. The file
/// is only read.
bool hasVorbisComments(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path);

/// All comments of an Ogg Vorbis file, as its encoder has put them: UTF-8, "KEY=value", in their order, the bytes
/// as they are. Nothing when the file cannot be read (which leaves a line), has no Vorbis stream, or its comment
/// header breaks off, has more than a thousand comments or takes more than 32 MiB. The file is only read.
std::optional<std::vector<std::string>> readVorbisComments(platform::FileSystem& files, platform::Diagnostics& log,
                                                           std::wstring_view path);

}
