#include "tags/vorbis_comments.h"

#include "tags/vorbis_stream.h"

#include <optional>

namespace tonquay::tags {

namespace {

constexpr std::string_view commentMark = "\3vorbis";

/// Passes over a comment of that length, as far as there is none with a value.
bool hasValue(OggPackets& packets, std::uint32_t length)
{
    bool behindKey = false;
    for (; length > 0; --length) {
        const auto byte = packets.byte();
        if (!byte)
            return false;
        if (behindKey)
            return true;
        behindKey = *byte == '=';
    }
    return false;
}

/// Moves to the first comment of the header and tells how many there are.
std::optional<std::uint32_t> commentCount(OggPackets& packets)
{
    if (!packets.passes(commentMark))
        return std::nullopt;
    const auto vendorLength = packets.number();
    if (!vendorLength)
        return std::nullopt;
    packets.skip(*vendorLength);
    return packets.number();
}

bool holdsComment(OggPackets& packets)
{
    for (std::uint32_t left = commentCount(packets).value_or(0); left > 0; --left) {
        const auto length = packets.number();
        if (!length)
            return false;
        if (hasValue(packets, *length))
            return true;
    }
    return false;
}

std::optional<std::vector<std::string>> allComments(OggPackets& packets)
{
    constexpr std::uint32_t mostComments = 1000;
    std::size_t bytesLeft = 32u << 20;
    const auto count = commentCount(packets);
    if (!count || *count > mostComments)
        return std::nullopt;
    std::vector<std::string> comments(*count);
    for (std::string& comment : comments) {
        const auto length = packets.number();
        if (!length || *length > bytesLeft)
            return std::nullopt;
        bytesLeft -= *length;
        while (comment.size() < *length) {
            const auto byte = packets.byte();
            if (!byte)
                return std::nullopt;
            comment.push_back(static_cast<char>(*byte));
        }
    }
    return comments;
}

}

bool hasVorbisComments(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path)
{
    const auto file = files.openForReading(path);
    if (!platform::passOver(log, file, "Open the file to see whether it has comments"))
        return false;
    FileWindow window(**file);
    auto packets = vorbisStream(window);
    const bool found = packets && packets->next() && holdsComment(*packets);
    platform::passOver(log, window.status(), "Look for comments in " + files.hostPath(path));
    return found;
}

std::optional<std::vector<std::string>> readVorbisComments(platform::FileSystem& files, platform::Diagnostics& log,
                                                           std::wstring_view path)
{
    const auto file = files.openForReading(path);
    if (!platform::passOver(log, file, "Open the file for its comments"))
        return std::nullopt;
    FileWindow window(**file);
    auto packets = vorbisStream(window);
    if (!packets || !packets->next())
        return std::nullopt;
    auto comments = allComments(*packets);
    if (!platform::passOver(log, window.status(), "Read the comments of " + files.hostPath(path)))
        return std::nullopt;
    return comments;
}

}
