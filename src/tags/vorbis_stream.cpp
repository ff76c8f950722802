#include "tags/vorbis_stream.h"

#include <cstdint>

namespace tonquay::tags {

namespace {

constexpr std::string_view identificationMark = "\1vorbis";

/// One of two files that are compared.
struct Side {
    std::unique_ptr<platform::BinaryFile> file;
    FileWindow window{*file};
    std::optional<OggPackets> packets = vorbisStream(window);

    /// Moves behind the comment header.
    bool reachSetUp() { return packets && packets->next() && packets->next(); }
};

bool haveSamePackets(Side& left, Side& right)
{
    if (!left.reachSetUp() || !right.reachSetUp())
        return false;
    for (;;) {
        for (;;) {
            const auto byte = left.packets->byte();
            if (byte != right.packets->byte())
                return false;
            if (!byte)
                break;
        }
        const bool goesOn = left.packets->next();
        if (goesOn != right.packets->next())
            return false;
        if (!goesOn)
            return true;
    }
}

}

std::optional<OggPackets> vorbisStream(FileWindow& window)
{
    for (auto page = nextPage(window, 0); page && page->first; page = nextPage(window, page->end)) {
        OggPackets packets(window, *page);
        if (packets.passes(identificationMark))
            return packets;
    }
    return std::nullopt;
}

bool isOneStream(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path)
{
    const auto file = files.openForReading(path);
    if (!platform::passOver(log, file, "Open the file to see its streams"))
        return false;
    FileWindow window(**file);
    std::optional<std::uint32_t> serial;
    for (auto page = nextPage(window, 0); page; page = nextPage(window, page->end)) {
        if (serial.value_or(page->serial) != page->serial)
            return false;
        serial = page->serial;
    }
    return serial && platform::passOver(log, window.status(), "Look for streams in " + files.hostPath(path));
}

bool hasSameVorbisSound(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view left,
                        std::wstring_view right)
{
    auto first = files.openForReading(left);
    auto second = files.openForReading(right);
    if (!platform::passOver(log, first, "Open the file to compare its sound") ||
        !platform::passOver(log, second, "Open the file to compare its sound"))
        return false;
    Side one{std::move(*first)};
    Side other{std::move(*second)};
    const bool same = haveSamePackets(one, other);
    return platform::passOver(log, one.window.status(), "Read " + files.hostPath(left)) &&
           platform::passOver(log, other.window.status(), "Read " + files.hostPath(right)) && same;
}

}
