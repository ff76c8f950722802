#include "host/tags/bounded_stream.h"

#include "host/posix/descriptor.h"

#include <algorithm>
#include <span>

namespace tonquay::host {

TagLib::ByteVector BoundedStream::readBlock(unsigned long length)
{
    if (position_ >= length_ || readsLeft_ <= 0)
        return {};
    --readsLeft_;
    length = std::min({length, static_cast<unsigned long>(length_ - position_), bytesLeft_});
    TagLib::ByteVector bytes(static_cast<unsigned int>(length));
    const auto wanted = std::as_writable_bytes(std::span(bytes.data(), length));
    const std::size_t done =
        length < ahead_.size() ? readAhead(wanted) : readWhatIsThere(descriptor_, wanted, position_);
    bytes.resize(static_cast<unsigned int>(done));
    bytesLeft_ -= done;
    position_ += static_cast<long>(done);
    return bytes;
}

std::size_t BoundedStream::readAhead(std::span<std::byte> bytes)
{
    const auto end = position_ + static_cast<long>(bytes.size());
    if (position_ < aheadAt_ || end > aheadAt_ + static_cast<long>(aheadBytes_)) {
        aheadAt_ = position_;
        const auto there = std::min(ahead_.size(), static_cast<std::size_t>(length_ - position_));
        aheadBytes_ = readWhatIsThere(descriptor_, std::span(ahead_).first(there), position_);
    }
    const auto found = std::span(ahead_).first(aheadBytes_).subspan(static_cast<std::size_t>(position_ - aheadAt_));
    const std::size_t count = std::min(found.size(), bytes.size());
    std::ranges::copy(found.first(count), bytes.begin());
    return count;
}

void BoundedStream::seek(long offset, Position from)
{
    const long base = from == Beginning ? 0 : from == Current ? position_ : length_;
    position_ = std::clamp(offset, -base, length_ - base) + base;
}

void BoundedStream::writeBlock(const TagLib::ByteVector&) {}

void BoundedStream::insert(const TagLib::ByteVector&, unsigned long, unsigned long) {}

void BoundedStream::removeBlock(unsigned long, unsigned long) {}

void BoundedStream::truncate(long) {}

}
