#pragma once

#include <tiostream.h>

#include <cstdint>

namespace tonquay::host {

/// An open file as TagLib reads it, never written. It stops giving bytes when the library has read more than a sane
/// file makes it read, so that no file can keep it busy or fill the memory.
class BoundedStream final : public TagLib::IOStream {
public:
    /// The descriptor stays the caller's and must outlive this.
    BoundedStream(int descriptor, std::int64_t length) : descriptor_(descriptor), length_(length) {}

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return position_; }
    long length() override { return length_; }
    void truncate(long length) override;

private:
    int descriptor_;
    long length_;
    long position_ = 0;
    unsigned long bytesLeft_ = 32UL << 20;
    int readsLeft_ = 100'000;
};

}
