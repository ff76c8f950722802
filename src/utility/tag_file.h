#pragma once

#include "base/result.h"
#include "platform/clock.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "platform/id3v2_contents.h"
#include "tags/id3v2_tag.h"
#include "utility/fields.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tonquay::utility {

/// Reads all that the tag of a file holds, by the file's host path. Fails, with a sentence for people, for what cannot
/// be read as a file.
using ContentsReader = std::function<base::Result<platform::Id3v2Contents>(const std::string& hostPath)>;

/// A file as it was read once, twice over: what is written back of its tag, and all that its tag holds.
struct TagFile {
    std::wstring path;
    tags::TagHeader header; ///< the first ten bytes, of a tag or not
    std::string tagEnd;     ///< the last ten bytes of the tag, which stay when it is replaced
    std::string start;      ///< the first bytes of the file behind its tag
    platform::Id3v2Contents contents;
    std::unique_ptr<tags::clsID3v2> tag; ///< as it is written back
    Values values;                       ///< as they are shown: what a text in UTF-16 says, not what it is stored as

    bool hasTag() const { return header.isThere(); }
    /// There is a tag whose values can be read.
    bool isKnown() const { return hasTag() && header.version() == tags::TagHeader::knownVersion; }
};

/// What reading and writing a tag take.
struct TagServices {
    platform::FileSystem& files;
    platform::Diagnostics& log;
    platform::Clock& clock;
    ContentsReader readContents;
    std::wstring startFolder{}; ///< where a person begins to look for a file
};

/// Opens for reading only, and makes no file where there is none.
base::Result<TagFile> readTagFile(const TagServices& services, std::wstring_view path);

/// What stands in the way of a tag in this file for other programs, a line each: the flags that it would have, what is
/// left of the old one, or a file of another sort. For a tag that is `written`, else for one that is removed.
std::vector<std::wstring> oddities(const TagFile& file, bool written);

}
