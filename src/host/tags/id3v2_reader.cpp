#include "host/tags/id3v2_reader.h"

#include "host/tags/bounded_stream.h"
#include "host/tags/careful_frames.h"
#include "host/tags/frame_fields.h"
#include "host/tags/library_file.h"
#include "host/tags/plain_file.h"

#include <id3v2header.h>
#include <id3v2synchdata.h>
#include <unknownframe.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <string_view>

namespace tonquay::host {

namespace {

using platform::Id3v2Contents;
using TagLib::ByteVector;
namespace id3v2 = TagLib::ID3v2;

/// Leaves every frame as the bytes that it is.
class RawFrames final : public id3v2::FrameFactory {
public:
    bool updateFrame(OpenFrame::Header* header) const override
    {
        if (header->compression())
            takeOffFlags(*header);
        return false;
    }
};

std::string_view charsOf(const ByteVector& bytes)
{
    return {bytes.data(), bytes.size()};
}

/// Where the first frame begins. The size of an extended header counts its own four bytes since version 2.4 only.
unsigned int firstFrame(const id3v2::Header& header, const ByteVector& body)
{
    constexpr unsigned int sizeBytes = 4;
    if (!header.extendedHeader() || header.majorVersion() < 3 || body.size() < sizeBytes)
        return 0;
    const ByteVector field = body.mid(0, sizeBytes);
    const unsigned int claimed =
        header.majorVersion() == 3 ? field.toUInt() : std::max(id3v2::SynchData::toUInt(field), sizeBytes) - sizeBytes;
    return std::min(claimed, body.size() - sizeBytes) + sizeBytes;
}

bool isIdentifier(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
}

std::size_t groupsOfSeven(std::string_view bytes)
{
    std::size_t sum = 0;
    for (const char byte : bytes)
        sum = (sum << 7) + static_cast<unsigned char>(byte);
    return sum;
}

/// Other programs of the suite write the sizes of frames of version 2.3 in groups of seven bits, where the standard has
/// a plain number. Such a tag leads by these sizes from frame to frame to its very end; one of anybody else's with a
/// frame that is long enough to tell does not.
bool isInGroupsOfSeven(std::string_view body, std::size_t place)
{
    constexpr std::size_t identifierBytes = 4;
    constexpr std::size_t headerBytes = 10;
    const std::size_t end = body.find_last_not_of('\0') + 1;
    bool tells = false;
    while (place < end) {
        if (place + headerBytes > body.size() || !isIdentifier(body.substr(place, identifierBytes)))
            return false;
        const std::size_t size = groupsOfSeven(body.substr(place + identifierBytes, 4));
        place += headerBytes + size;
        tells = tells || size > 127;
        if (size == 0 || place > body.size())
            return false;
    }
    return tells;
}

/// The same frame with a plain size.
ByteVector withPlainSize(const ByteVector& data)
{
    const std::size_t size = groupsOfSeven(charsOf(data).substr(4, 4));
    return data.mid(0, 4) + ByteVector::fromUInt(static_cast<unsigned int>(size)) +
           data.mid(8, static_cast<unsigned int>(size) + 2);
}

/// Compressed, encrypted or with a byte of a group in front.
bool isPlain(unsigned int version, std::string_view headerBytes)
{
    constexpr unsigned char of3 = 0xE0;
    constexpr unsigned char of4 = 0x4C;
    if (version < 3)
        return true;
    return (static_cast<unsigned char>(headerBytes[9]) & (version == 3 ? of3 : of4)) == 0;
}

Id3v2Contents::Frame seen(const id3v2::Frame& frame, std::string_view headerBytes, std::string_view body, bool plain)
{
    // The library shows a NUL at the end of an identifier that a version 2.2 program has written into 2.3.
    const std::size_t length = std::min(headerBytes.find('\0'), frame.frameID().size() < 4 ? 3UL : 4UL);
    Id3v2Contents::Frame result{.identifier = std::string(headerBytes.substr(0, length)),
                                .bytes = body.size(),
                                .start = std::string(body.substr(0, Id3v2Contents::startBytes))};
    const auto* const raw = dynamic_cast<const id3v2::UnknownFrame*>(&frame);
    if (!plain || raw == nullptr)
        return result;
    const ByteVector data = raw->data();
    fillFields(result, charsOf(data).substr(0, Id3v2Contents::startBytes));
    result.dataBytes += data.size() - std::min<std::size_t>(data.size(), Id3v2Contents::startBytes);
    return result;
}

Id3v2Contents walk(const id3v2::Header& header, const ByteVector& body, std::size_t missing)
{
    constexpr std::size_t mostFrames = 1000;
    const RawFrames factory;
    const unsigned int headerBytes = id3v2::Frame::headerSize(header.majorVersion());
    Id3v2Contents contents;
    unsigned int place = firstFrame(header, body);
    const bool inGroups = header.majorVersion() == 3 && isInGroupsOfSeven(charsOf(body), place);
    while (place + headerBytes < body.size() && body[static_cast<int>(place)] != '\0' &&
           contents.frames.size() < mostFrames) {
        const ByteVector data = body.mid(place);
        const std::unique_ptr<id3v2::Frame> frame(factory.createFrame(inGroups ? withPlainSize(data) : data, &header));
        if (!frame || frame->size() == 0)
            break;
        const std::string_view all = charsOf(body).substr(place);
        const std::string_view own = all.substr(headerBytes, frame->size());
        contents.frames.push_back(seen(*frame, all, own, isPlain(header.majorVersion(), all)));
        place += headerBytes + static_cast<unsigned int>(own.size());
    }
    const std::string_view rest = charsOf(body).substr(std::min(place, body.size()));
    if (rest.find_first_not_of('\0') != std::string_view::npos)
        contents.unreadBytes = rest.size();
    contents.unreadBytes += missing;
    return contents;
}

Id3v2Contents read(const PlainFile& opened)
{
    BoundedStream stream(opened.descriptor.get(), opened.length);
    LibraryFile file(&stream);
    const ByteVector start = file.readBlock(id3v2::Header::size());
    if (start.size() < id3v2::Header::size() || !start.startsWith(id3v2::Header::fileIdentifier()))
        return {};
    const id3v2::Header header(start);
    ByteVector body = file.readBlock(header.tagSize());
    const std::size_t there =
        std::min<std::size_t>(header.tagSize(), static_cast<std::size_t>(opened.length) - start.size());
    const std::size_t missing = there - std::min<std::size_t>(there, body.size());
    if (header.unsynchronisation() && header.majorVersion() <= 3)
        body = id3v2::SynchData::decode(body);
    return walk(header, body, missing);
}

}

base::Result<Id3v2Contents> readId3v2Contents(const std::string& hostPath)
{
    const auto file = openPlainFile(hostPath);
    if (!file)
        return file.failure();
    try {
        return read(*file);
    } catch (const std::exception& error) {
        return base::Failure{base::Failure::Kind::invalid, hostPath,
                             "its tag cannot be read: " + std::string(error.what())};
    }
}

}
