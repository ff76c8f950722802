#pragma once

#include <tiostream.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tonquay::host {

/// An open file as TagLib reads it, never written. It stops giving bytes when the library has read more than a sane
/// file makes it read, so that no file can keep it busy or fill the memory. Small blocks are taken from a larger one,
/// since the library looks at a file's head three bytes at a time.
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
    std::size_t readAhead(std::span<std::byte> bytes);

    int descriptor_;
    long length_;
    long position_ = 0;
    std::array<std::byte, 4096> ahead_; ///< what was read last for a small block, `aheadBytes_` of them
    long aheadAt_ = 0;
    std::size_t aheadBytes_ = 0;
    unsigned long bytesLeft_ = 32UL << 20;
    int readsLeft_ = 100'000;
};

}
