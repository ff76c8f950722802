#include "tags/id3v2_tag.h"

#include "tags/tag_error.h"
#include "tags/tag_rewrite.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <type_traits>

namespace tonquay::tags {

namespace {

// The last place of a tag's body that a frame may reach to. The header of one more may begin there.
constexpr std::int32_t lastReadPlace = 1000;
constexpr std::size_t readBytes = static_cast<std::size_t>(lastReadPlace) + 1 + id3v2HeaderBytes;

constexpr std::size_t paddedTo = 257;

template <class T>
T orRaise(base::Result<T> result)
{
    if (!result)
        throw TagError(result.failure());
    if constexpr (!std::is_void_v<T>)
        return std::move(*result);
}

template <class Frame>
base::Status addParsed(clsFrames& frames, const FrameHeader& header, std::span<const std::byte> body)
{
    const auto frame = std::make_shared<Frame>();
    frame->FrameID(header.identifier);
    frame->setFlags(header.flags);
    auto parsed = frame->parseBytes(body);
    if (parsed)
        frames.Add(frame);
    return parsed;
}

template <class Frame>
void addNew(clsFrames& frames, std::wstring_view identifier, std::wstring_view value)
{
    const auto frame = std::make_shared<Frame>();
    frame->FrameID(identifier);
    frame->Data(value);
    frames.Add(frame);
}

clsFrame* firstFrame(const clsFrames& frames, std::wstring_view identifier)
{
    const auto all = frames.NewEnum();
    const auto found = std::ranges::find_if(all, [&](const auto& frame) { return frame->FrameID() == identifier; });
    return found == all.end() ? nullptr : found->get();
}

}

clsID3v2::clsID3v2(platform::FileSystem& files, platform::Diagnostics& log, platform::Clock& clock)
    : files_(files),
      log_(log),
      clock_(clock)
{}

void clsID3v2::ReadTag(std::wstring_view path)
{
    frames_.Clear();
    hasTag_ = false;
    const auto file = files_.openForReading(path);
    if (!platform::passOver(log_, file, "Open the file for its ID3v2 tag"))
        return;
    ReadTag(**file, files_.hostPath(path));
}

void clsID3v2::ReadTag(platform::BinaryFile& file, std::string_view where)
{
    frames_.Clear();
    hasTag_ = false;
    TagHeader header;
    platform::passOver(log_, file.seek(0), "Move to the ID3v2 tag");
    platform::passOver(log_, file.read(header.bytes), "Read the header of the ID3v2 tag");
    hasTag_ = header.isThere() && header.version() == TagHeader::knownVersion;
    if (!hasTag_)
        return;
    std::array<std::byte, readBytes> body{};
    const auto wanted = std::min(static_cast<std::size_t>(header.bodySize()), body.size());
    platform::passOver(log_, file.read(std::span(body).first(wanted)), "Read the frames of the ID3v2 tag");
    parseFrames(body, header.bodySize(), where);
}

void clsID3v2::parseFrames(std::span<const std::byte> body, std::int32_t bodySize, std::string_view where)
{
    constexpr auto headerSize = static_cast<std::int32_t>(id3v2HeaderBytes);
    std::vector<std::byte> frame;
    for (std::int32_t place = 0; bodySize - place >= headerSize;) {
        const FrameHeader header =
            ParseFrameHeader(body.subspan(static_cast<std::size_t>(place)).first<id3v2HeaderBytes>());
        place += headerSize;
        // Padding has begun.
        if (header.identifier.find(L'\0') != std::wstring::npos)
            return;
        if (place > lastReadPlace || place + header.size - 1 > lastReadPlace)
            return;
        // A frame of no bytes at all is taken with those of the frame before it.
        if (header.size > 0) {
            const auto bytes = body.subspan(static_cast<std::size_t>(place), static_cast<std::size_t>(header.size));
            frame.assign(bytes.begin(), bytes.end());
        }
        place += header.size;
        if (const auto added = addParsedFrame(header, frame); !added)
            platform::passOver(log_, added, std::string("Read a frame of the ID3v2 tag of ").append(where));
    }
}

base::Status clsID3v2::addParsedFrame(const FrameHeader& header, std::span<const std::byte> body)
{
    switch (GetFrameKind(header.identifier)) {
    case FrameKind::text: return AddParsedTextFrame(header, body);
    case FrameKind::web: return AddParsedWebFrame(header, body);
    case FrameKind::comment: return AddParsedCommentFrame(header, body);
    case FrameKind::notServed: break;
    }
    return {};
}

base::Status clsID3v2::AddParsedTextFrame(const FrameHeader& header, std::span<const std::byte> body)
{
    return addParsed<clsText_Frame>(frames_, header, body);
}

base::Status clsID3v2::AddParsedCommentFrame(const FrameHeader& header, std::span<const std::byte> body)
{
    return addParsed<clsComment_Frame>(frames_, header, body);
}

base::Status clsID3v2::AddParsedWebFrame(const FrameHeader& header, std::span<const std::byte> body)
{
    return addParsed<clsWeb_Frame>(frames_, header, body);
}

void clsID3v2::AddNewTextFrame(std::wstring_view identifier, std::wstring_view value)
{
    addNew<clsText_Frame>(frames_, identifier, value);
}

void clsID3v2::AddNewCommentFrame(std::wstring_view identifier, std::wstring_view value)
{
    addNew<clsComment_Frame>(frames_, identifier, value);
}

void clsID3v2::AddNewWebFrame(std::wstring_view identifier, std::wstring_view value)
{
    addNew<clsWeb_Frame>(frames_, identifier, value);
}

std::wstring clsID3v2::GetFrameValue(FrameValueID id) const
{
    const clsFrame* const frame = firstFrame(frames_, GetFrameIDString(id));
    std::wstring value = frame == nullptr ? std::wstring() : frame->Data();
    std::erase(value, L'\0');
    return value;
}

void clsID3v2::SetFrameValue(FrameValueID id, std::wstring_view value)
{
    const std::wstring_view identifier = GetFrameIDString(id);
    if (clsFrame* const frame = firstFrame(frames_, identifier)) {
        frame->Data(value);
        return;
    }
    switch (GetFrameKind(identifier)) {
    case FrameKind::text: AddNewTextFrame(identifier, value); break;
    case FrameKind::web: AddNewWebFrame(identifier, value); break;
    case FrameKind::comment: AddNewCommentFrame(identifier, value); break;
    case FrameKind::notServed: break;
    }
}

/// Header, frames and padding. With at most twelve values of 32767 characters beside what was read, its size fits into
/// the 28 bits that the header has for it by far.
base::Result<std::vector<std::byte>> clsID3v2::tagBytes(std::byte flags) const
{
    std::vector<std::byte> tag(id3v2HeaderBytes);
    for (const auto& frame : frames_.NewEnum()) {
        const auto body = frame->getBytes();
        if (!body)
            return body.failure();
        std::ranges::copy(frameHeaderBytes(*frame), std::back_inserter(tag));
        std::ranges::copy(*body, std::back_inserter(tag));
    }
    const std::size_t odd = (tag.size() - id3v2HeaderBytes) % paddedTo;
    tag.resize(tag.size() + (odd == 0 ? 0 : paddedTo - odd));
    std::ranges::copy(tagHeaderBytes(flags, static_cast<std::int32_t>(tag.size() - id3v2HeaderBytes)), tag.begin());
    return tag;
}

void clsID3v2::WriteTag(std::wstring_view path, bool ignoreReadOnly)
{
    TagRewrite rewrite(files_, log_, clock_, path);
    const TagHeader old = orRaise(rewrite.open(ignoreReadOnly));
    orRaise(rewrite.replaceStart(orRaise(tagBytes(old.flags()))));
    hasTag_ = true;
}

void clsID3v2::removeTag(std::wstring_view path, bool ignoreReadOnly)
{
    TagRewrite rewrite(files_, log_, clock_, path);
    if (!orRaise(rewrite.open(ignoreReadOnly)).isThere())
        return;
    orRaise(rewrite.replaceStart({}));
    frames_.Clear();
    hasTag_ = false;
}

}
