#pragma once

#include "base/result.h"
#include "console/tag_changes.h"
#include "platform/platform.h"

#include <string>
#include <string_view>
#include <vector>

namespace tonquay::console {

/// The comments of an Ogg Vorbis file ("KEY=value") with the changes in them. A field takes the place of the first
/// comment that says it, under whichever key readers know it by; other comments that say it go, all others stay as they
/// are, in their order.
std::vector<std::string> changedComments(const std::vector<std::string>& comments, const TagChanges& changes);

/// Changes the comments of an Ogg Vorbis file through vorbiscomment of the program folder. It writes a new file beside
/// the old one, which takes the old one's place in one step when its comments are what they should be and its sound is
/// the same to the byte. Waits for the program, with the event loop running.
///
/// Fails when the file is missing, read-only or in use, has other streams beside its sound or comments that cannot be
/// read, and for every step that fails. The file is then as it was, and the new one is gone.
base::Status editOggTag(platform::Platform& platform, std::wstring_view path, const TagChanges& changes);

}
