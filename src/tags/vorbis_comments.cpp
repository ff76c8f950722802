#include "tags/vorbis_comments.h"

#include "tags/ogg_packets.h"

#include <optional>

namespace tonquay::tags {

namespace {

constexpr std::string_view identificationMark = "\1vorbis";
constexpr std::string_view commentMark = "\3vorbis";

/// The first stream of the file that is Vorbis, in its first packet. The first pages of all streams come before all
/// others.
std::optional<OggPackets> vorbisStream(FileWindow& window)
{
    for (auto page = nextPage(window, 0); page && page->first; page = nextPage(window, page->end)) {
        OggPackets packets(window, *page);
        if (packets.passes(identificationMark))
            return packets;
    }
    return std::nullopt;
}

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

bool holdsComment(OggPackets& packets)
{
    if (!packets.passes(commentMark))
        return false;
    const auto vendorLength = packets.number();
    if (!vendorLength)
        return false;
    packets.skip(*vendorLength);
    const auto count = packets.number();
    for (std::uint32_t left = count.value_or(0); left > 0; --left) {
        const auto length = packets.number();
        if (!length)
            return false;
        if (hasValue(packets, *length))
            return true;
    }
    return false;
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

}
