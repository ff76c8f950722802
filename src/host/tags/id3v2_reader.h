#pragma once

#include "base/result.h"
#include "platform/id3v2_contents.h"

#include <string>

namespace tonquay::host {

/// Reads the ID3v2 tag at the start of a file (versions 2.2 to 2.4, with or without an extended header and
/// unsynchronisation) for what it holds, not for what it is worth: nothing is left out, renamed or joined. A tag of
/// this suite is read as it is meant, with sizes that others misread.
///
/// A file without such a tag has no frames; that is no failure. Of each frame only the start is decoded, so a text may
/// end early; of one that is compressed, encrypted or grouped nothing is. What follows the thousandth frame, or lies
/// beyond 32 MiB, counts as unread. Fails as readFileTags() does.
///
/// From one thread at a time.
base::Result<platform::Id3v2Contents> readId3v2Contents(const std::string& hostPath);

}
