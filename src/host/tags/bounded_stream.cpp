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
    const std::size_t done =
        readWhatIsThere(descriptor_, std::as_writable_bytes(std::span(bytes.data(), length)), position_);
    bytes.resize(static_cast<unsigned int>(done));
    bytesLeft_ -= done;
    position_ += static_cast<long>(done);
    return bytes;
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
