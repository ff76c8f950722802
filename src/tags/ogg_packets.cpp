#include "tags/ogg_packets.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace tonquay::tags {

namespace {

// The mark that each page begins with, and the version of its form.
constexpr std::string_view capture{"OggS\0", 5};
constexpr std::size_t flagsAt = 5;
constexpr std::size_t serialAt = 14;
constexpr std::size_t segmentsAt = 26;
constexpr std::size_t headBytes = 27;
constexpr unsigned continuedFlag = 1;
constexpr unsigned firstFlag = 2;
constexpr std::uint8_t fullSegment = 255;

std::uint8_t byteAt(std::string_view bytes, std::size_t place)
{
    return static_cast<std::uint8_t>(bytes[place]);
}

std::uint32_t littleEndian(std::string_view bytes)
{
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        value = value << 8 | byteAt(bytes, i - 1);
    return value;
}

/// The page that begins at `offset`. Nothing when the file ends within its head.
std::optional<OggPage> pageAt(FileWindow& window, std::int64_t offset)
{
    const std::string_view head = window.at(offset, headBytes + fullSegment);
    if (head.size() < headBytes)
        return std::nullopt;
    OggPage page;
    page.continued = (byteAt(head, flagsAt) & continuedFlag) != 0;
    page.first = (byteAt(head, flagsAt) & firstFlag) != 0;
    page.serial = littleEndian(head.substr(serialAt, 4));
    page.segments = byteAt(head, segmentsAt);
    if (head.size() < headBytes + page.segments)
        return std::nullopt;
    std::ranges::transform(head.substr(headBytes, page.segments), page.lacing.begin(),
                           [](char c) { return static_cast<std::uint8_t>(c); });
    page.body = offset + static_cast<std::int64_t>(headBytes + page.segments);
    page.end = std::accumulate(page.lacing.begin(), page.lacing.end(), page.body);
    return page;
}

}

std::string_view FileWindow::at(std::int64_t offset, std::size_t count)
{
    const std::int64_t end = offset_ + static_cast<std::int64_t>(bytes_.size());
    if (offset < offset_ || offset + static_cast<std::int64_t>(count) > end)
        load(offset);
    return std::string_view(bytes_).substr(static_cast<std::size_t>(offset - offset_), count);
}

void FileWindow::load(std::int64_t offset)
{
    offset_ = offset;
    bytes_.clear();
    status_ = file_.seek(offset);
    if (!status_)
        return;
    bytes_.resize(size);
    const auto count = file_.read(std::as_writable_bytes(std::span(bytes_)));
    if (!count)
        status_ = count.failure();
    bytes_.resize(count ? *count : 0);
}

std::optional<OggPage> nextPage(FileWindow& window, std::int64_t offset)
{
    // Pages follow one another, so most are found in the piece that is there already.
    if (window.at(offset, capture.size()) == capture)
        return pageAt(window, offset);
    while (true) {
        const std::string_view bytes = window.at(offset, FileWindow::size);
        const std::size_t found = bytes.find(capture);
        if (found != std::string_view::npos)
            return pageAt(window, offset + static_cast<std::int64_t>(found));
        if (bytes.size() < capture.size())
            return std::nullopt;
        // What the piece ends with may be the beginning of a mark.
        offset += static_cast<std::int64_t>(bytes.size() - capture.size() + 1);
    }
}

OggPackets::OggPackets(FileWindow& window, const OggPage& page) : window_(window), page_(page), place_(page.body)
{
    nextSegment(page.continued);
}

std::optional<std::uint8_t> OggPackets::byte()
{
    if (!inPacket())
        return std::nullopt;
    const std::string_view found = window_.at(place_, 1);
    if (found.empty()) {
        left_ = 0;
        goesOn_ = false;
        return std::nullopt;
    }
    ++place_;
    --left_;
    return byteAt(found, 0);
}

std::optional<std::uint32_t> OggPackets::number()
{
    std::string bytes;
    while (bytes.size() < 4) {
        const auto found = byte();
        if (!found)
            return std::nullopt;
        bytes.push_back(static_cast<char>(*found));
    }
    return littleEndian(bytes);
}

bool OggPackets::passes(std::string_view mark)
{
    return std::ranges::all_of(mark, [&](char c) { return byte() == static_cast<std::uint8_t>(c); });
}

void OggPackets::skip(std::uint32_t count)
{
    while (count > 0 && inPacket()) {
        const auto step = static_cast<std::uint32_t>(std::min<std::size_t>(count, left_));
        place_ += step;
        left_ -= step;
        count -= step;
    }
}

bool OggPackets::next()
{
    while (inPacket()) {
        place_ += static_cast<std::int64_t>(left_);
        left_ = 0;
    }
    return nextSegment(false);
}

/// True when a byte of the packet comes next.
bool OggPackets::inPacket()
{
    while (left_ == 0)
        if (!goesOn_ || !nextSegment(true))
            return false;
    return true;
}

/// Moves to the stream's next page.
bool OggPackets::turnPage()
{
    for (std::int64_t end = page_.end;;) {
        const auto page = nextPage(window_, end);
        if (!page)
            return false;
        end = page->end;
        if (page->serial != page_.serial)
            continue;
        page_ = *page;
        segment_ = 0;
        place_ = page_.body;
        return true;
    }
}

bool OggPackets::nextSegment(bool samePacket)
{
    goesOn_ = false;
    while (segment_ == page_.segments)
        if (!turnPage() || page_.continued != samePacket)
            return false;
    left_ = page_.lacing[segment_++];
    goesOn_ = left_ == fullSegment;
    return true;
}

}
