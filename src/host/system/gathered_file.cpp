#include "host/system/gathered_file.h"

#include "host/system/file_status.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tonquay::host {

GatheredFile::GatheredFile(Descriptor file, std::string where) : file_(std::move(file)), where_(std::move(where)) {}

GatheredFile::~GatheredFile()
{
    static_cast<void>(close());
}

base::Status GatheredFile::write(std::span<const std::byte> bytes)
{
    if (gathered_ == nullptr)
        gathered_ = std::make_unique_for_overwrite<std::byte[]>(gatheredBytes);
    while (!bytes.empty()) {
        // Filled to the brim, so that what goes out begins and ends with the pages of the file.
        const std::size_t part = std::min(bytes.size(), gatheredBytes - count_);
        std::memcpy(gathered_.get() + count_, bytes.data(), part);
        count_ += part;
        bytes = bytes.subspan(part);
        if (count_ == gatheredBytes)
            if (auto done = flush(); !done)
                return done;
    }
    return {};
}

base::Result<std::size_t> GatheredFile::read(std::span<std::byte> buffer)
{
    if (auto done = flush(); !done)
        return done.failure();
    auto count = readAt(file_.get(), buffer, start_, where_);
    if (count)
        start_ += static_cast<std::int64_t>(*count);
    return count;
}

base::Status GatheredFile::seek(std::int64_t offset)
{
    auto done = flush();
    if (offset < 0)
        return base::Failure{base::Failure::Kind::invalid, where_, "has no place before its start"};
    // The move is made also when the flush failed: whoever goes on after that writes where it meant to.
    start_ = offset;
    return done;
}

base::Result<platform::BinaryFile::Facts> GatheredFile::facts()
{
    struct stat status {};
    if (fstat(file_.get(), &status) != 0)
        return systemFailure(where_, "looked at", errno);
    return Facts{.length = status.st_size, .lastChange = wallTime(status.st_mtime)};
}

base::Status GatheredFile::endHere()
{
    auto done = flush();
    if (done && ftruncate(file_.get(), start_) != 0)
        return systemFailure(where_, "cut off", errno);
    return done;
}

base::Status GatheredFile::close()
{
    if (!file_)
        return {};
    const auto flushed = flush();
    const auto closed = file_.close(where_);
    return flushed ? closed : flushed;
}

/// What cannot be written is dropped, and the place stays behind it: a later write does not land where the lost bytes
/// belong.
base::Status GatheredFile::flush()
{
    if (count_ == 0)
        return {};
    std::size_t written = 0;
    auto done = writeAt(file_.get(), {gathered_.get(), count_}, start_, where_, written);
    start_ += static_cast<std::int64_t>(count_);
    count_ = 0;
    return done;
}

}
