#pragma once

#include "base/result.h"
#include "platform/file_system.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tonquay::tags {

/// A file's bytes by their offsets, read in pieces that are kept until another is needed.
class FileWindow {
public:
    static constexpr std::size_t size = 1u << 16;

    /// `file` outlives this.
    explicit FileWindow(platform::BinaryFile& file) : file_(file) {}

    /// `count` bytes, at most `size`, or fewer where the file ends or cannot be read. They hold until the next call.
    std::string_view at(std::int64_t offset, std::size_t count);

    /// Why bytes could not be read, if so.
    const base::Status& status() const { return status_; }

private:
    void load(std::int64_t offset);

    platform::BinaryFile& file_;
    std::string bytes_;
    std::int64_t offset_ = 0;
    base::Status status_;
};

/// The head of a page of an Ogg file (RFC 3533). Checksums are not looked at.
struct OggPage {
    std::uint32_t serial = 0; ///< of its stream
    bool continued = false;   ///< goes on with a packet of the page before
    bool first = false;       ///< of its stream
    std::size_t segments = 0;
    std::array<std::uint8_t, 255> lacing{}; ///< the bytes of each segment
    std::int64_t body = 0;                  ///< where the segments begin in the file
    std::int64_t end = 0;                   ///< where they end, by the lacing
};

/// The next page that begins at `offset` or behind it; what is no page is skipped.
std::optional<OggPage> nextPage(FileWindow& window, std::int64_t offset);

/// The packets of one stream, one after the other, each read byte by byte. A packet ends early where its pages do not
/// go on, or the file ends.
class OggPackets {
public:
    /// At the first packet that begins on `page`.
    OggPackets(FileWindow& window, const OggPage& page);

    /// The next byte of the packet; nothing at its end.
    std::optional<std::uint8_t> byte();

    /// A little-endian number of four bytes.
    std::optional<std::uint32_t> number();

    /// True when the packet goes on with `mark`; it is then behind it.
    bool passes(std::string_view mark);

    /// Passes over that many bytes, or to the packet's end.
    void skip(std::uint32_t count);

    /// Moves to the stream's next packet. False when there is none.
    bool next();

private:
    bool inPacket();
    bool turnPage();
    bool nextSegment(bool samePacket);

    FileWindow& window_;
    OggPage page_;
    std::size_t segment_ = 0; ///< the next one of the page
    std::int64_t place_ = 0;  ///< in the file
    std::size_t left_ = 0;    ///< bytes of the segment in work
    bool goesOn_ = false;     ///< the packet does, behind that segment
};

}
