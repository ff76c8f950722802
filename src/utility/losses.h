#pragma once

#include "platform/id3v2_contents.h"
#include "tags/id3v2_frames.h"
#include "utility/fields.h"

#include <string>
#include <vector>

/// What a file's tag holds, beside what was read of it to be written back.
namespace tonquay::utility {

/// The frame of the file that a frame in memory was read from, byte for byte; null when none is the same.
const platform::Id3v2Contents::Frame* sourceOf(const platform::Id3v2Contents& contents, const tags::clsFrame& frame);

/// What would be gone after `frames` with these changes were written in the place of all contents; a line each, in the
/// order of the file. What a person has changed or emptied is no loss.
std::vector<std::wstring> lossesOfWriting(const platform::Id3v2Contents& contents, const tags::clsFrames& frames,
                                          const Changes& changes);

/// The same for taking the tag away: all that says something.
std::vector<std::wstring> lossesOfRemoving(const platform::Id3v2Contents& contents);

}
