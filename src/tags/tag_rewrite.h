#pragma once

#include "platform/clock.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/id3v2_headers.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace tonquay::tags {

/// Gives a file another start: a new file is written beside it and then takes its place in one step. Up to that step
/// the old file is whole, from then on the new one is.
class TagRewrite {
public:
    /// All of them outlive this.
    TagRewrite(platform::FileSystem& files, platform::Diagnostics& log, platform::Clock& clock, std::wstring_view path);

    /// Opens the file, for reading only, and reads where its tag is. With `ignoreReadOnly` a read-only file is made
    /// writable first.
    base::Result<TagHeader> open(bool ignoreReadOnly);

    /// Replaces the file by `start` and what follows the old tag. Of the old tag the last ten bytes follow too: its
    /// size is taken from the start of the file, where it should be from the end of its header. They are padding as a
    /// rule. Fails when nothing would follow: an empty file, or a tag that claims the whole of it.
    ///
    /// After a failure the old file is as it was and the new one is gone. Once only.
    base::Status replaceStart(std::span<const std::byte> start);

private:
    base::Status writeDraft(const std::wstring& draft, std::span<const std::byte> start);
    base::Status copyRest(platform::BinaryFile& to);
    base::Status putInPlace(const std::wstring& draft);

    platform::FileSystem& files_;
    platform::Diagnostics& log_;
    platform::Clock& clock_;
    std::wstring path_;
    std::unique_ptr<platform::BinaryFile> old_;
    std::int64_t restAt_ = 0;
    std::int64_t restBytes_ = 0;
};

}
