#pragma once

#include "base/result.h"
#include "console/tag_changes.h"
#include "platform/file_system.h"
#include "platform/file_tags.h"

#include <string>
#include <string_view>
#include <vector>

namespace tonquay::console {

/// Changes the ID3v1 block at the end of an MP3 file: the named fields, and no other byte. A file without a block gets
/// one, with what `known` says in the fields that are not named, and no genre where that is not in the table.
///
/// The result are remarks for the user, a sentence each: what the block could not hold of a value. Fails when the file
/// is missing, empty, read-only or in use, cannot be written, or does not hold the new block afterwards; what a failed
/// write has added to the file is cut off again.
base::Result<std::vector<std::string>> editMp3Tag(platform::FileSystem& files, std::wstring_view path,
                                                  const TagChanges& changes, const platform::FileTags& known);

}
