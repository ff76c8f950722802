#include "tags/tag_rewrite.h"

#include "tags/file_functions.h"

#include <algorithm>
#include <vector>

namespace tonquay::tags {

using base::Failure;

namespace {

constexpr std::int64_t copiedAtOnce = 256 << 10;

}

TagRewrite::TagRewrite(platform::FileSystem& files, platform::Diagnostics& log, platform::Clock& clock,
                       std::wstring_view path)
    : files_(files),
      log_(log),
      clock_(clock),
      path_(path)
{}

base::Result<TagHeader> TagRewrite::open(bool ignoreReadOnly)
{
    if (ignoreReadOnly && IsReadOnly(files_, path_))
        if (auto cleared = files_.clearAttributes(path_); !cleared)
            return cleared.failure();
    auto file = files_.openForReading(path_);
    if (!file)
        return file.failure();
    old_ = std::move(*file);
    TagHeader header;
    if (const auto count = old_->read(header.bytes); !count)
        return count.failure();
    restAt_ = header.isThere() ? header.bodySize() : 0;
    restBytes_ = files_.length(path_) - restAt_;
    return header;
}

base::Status TagRewrite::replaceStart(std::span<const std::byte> start)
{
    if (restBytes_ <= 0)
        return Failure{Failure::Kind::invalid, files_.hostPath(path_), "has nothing behind its tag"};
    const std::wstring draft = MakeTempFileName(files_, clock_, path_);
    auto done = writeDraft(draft, start);
    if (done)
        done = putInPlace(draft);
    if (!done && FileExists(files_, draft))
        platform::passOver(log_, files_.remove(draft), "Delete what was written of " + files_.hostPath(draft));
    return done;
}

base::Status TagRewrite::writeDraft(const std::wstring& draft, std::span<const std::byte> start)
{
    const auto file = files_.openBinary(draft);
    if (!file)
        return file.failure();
    if (auto written = (*file)->write(start); !written)
        return written;
    if (auto copied = copyRest(**file); !copied)
        return copied;
    return (*file)->close();
}

base::Status TagRewrite::copyRest(platform::BinaryFile& to)
{
    if (auto moved = old_->seek(restAt_); !moved)
        return moved;
    std::vector<std::byte> block(static_cast<std::size_t>(std::min(copiedAtOnce, restBytes_)));
    std::int64_t copied = 0;
    for (;;) {
        const auto count = old_->read(block);
        if (!count)
            return count.failure();
        if (*count == 0)
            break;
        if (auto written = to.write(std::span(block).first(*count)); !written)
            return written;
        copied += static_cast<std::int64_t>(*count);
    }
    // Somebody else is writing to it, and would go on in a file that has lost its name.
    if (copied != restBytes_)
        return Failure{Failure::Kind::invalid, files_.hostPath(path_), "has changed while it was copied"};
    return old_->close();
}

base::Status TagRewrite::putInPlace(const std::wstring& draft)
{
    // A read-only file gives way like any other.
    if (IsReadOnly(files_, path_))
        if (auto cleared = files_.clearAttributes(path_); !cleared)
            return cleared;
    return files_.replace(draft, path_);
}

}
