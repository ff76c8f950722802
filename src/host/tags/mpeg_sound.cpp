#include "host/tags/mpeg_sound.h"

#include "host/posix/descriptor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace tonquay::host {

namespace {

/// A file seen through one buffer that moves along.
class Window {
public:
    Window(int descriptor, std::int64_t end) : descriptor_(descriptor), end_(end) {}

    /// `count` bytes at `offset`, or fewer at the end of the file. They stay until the next call.
    std::span<const unsigned char> at(std::int64_t offset, std::size_t count)
    {
        if (offset < 0 || offset >= end_)
            return {};
        count = static_cast<std::size_t>(std::min<std::int64_t>(static_cast<std::int64_t>(count), end_ - offset));
        if (offset < start_ || offset + static_cast<std::int64_t>(count) > start_ + static_cast<std::int64_t>(held_))
            fill(offset);
        const auto skipped = static_cast<std::size_t>(offset - start_);
        if (skipped >= held_)
            return {};
        return std::span(buffer_).subspan(skipped, std::min(count, held_ - skipped));
    }

    bool holds(std::int64_t offset, std::string_view mark)
    {
        const auto bytes = at(offset, mark.size());
        return std::ranges::equal(bytes, mark, [](unsigned char byte, char c) { return static_cast<char>(byte) == c; });
    }

    std::uint32_t bigEndian(std::int64_t offset)
    {
        std::uint32_t value = 0;
        for (const unsigned char byte : at(offset, 4))
            value = value << 8 | byte;
        return value;
    }

    std::int64_t end() const { return end_; }
    void endAt(std::int64_t end) { end_ = end; }

private:
    void fill(std::int64_t offset)
    {
        start_ = offset;
        held_ = readWhatIsThere(descriptor_, std::as_writable_bytes(std::span(buffer_)), offset);
    }

    int descriptor_;
    std::int64_t end_;
    std::int64_t start_ = 0;
    std::size_t held_ = 0;
    std::vector<unsigned char> buffer_ = std::vector<unsigned char>(65536);
};

struct Frame {
    int versionBits = 0;
    int sampleRateHz = 0;
    int channels = 0;
    int samples = 0;
    std::int64_t bytes = 0;

    bool firstVersion() const { return versionBits == 3; }
};

constexpr std::array kbpsFirst{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr std::array kbpsLater{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr std::array ratesFirst{44100, 48000, 32000};

std::optional<Frame> frameAt(Window& file, std::int64_t offset)
{
    const auto head = file.at(offset, 4);
    constexpr int layerThree = 1;
    constexpr int reservedVersion = 1;
    if (head.size() < 4 || head[0] != 0xFF || (head[1] & 0xE0) != 0xE0)
        return std::nullopt;
    const int version = head[1] >> 3 & 3;
    const auto kbps = static_cast<std::size_t>(head[2] >> 4);
    const auto rate = static_cast<std::size_t>(head[2] >> 2 & 3);
    if (version == reservedVersion || (head[1] >> 1 & 3) != layerThree || kbps == 0 || kbps == 15 || rate == 3)
        return std::nullopt;
    Frame frame;
    frame.versionBits = version;
    frame.sampleRateHz = ratesFirst[rate] / (version == 3 ? 1 : version == 2 ? 2 : 4);
    frame.channels = head[3] >> 6 == 3 ? 1 : 2;
    frame.samples = frame.firstVersion() ? 1152 : 576;
    const int bitsPerSecond = 1000 * (frame.firstVersion() ? kbpsFirst[kbps] : kbpsLater[kbps]);
    frame.bytes = frame.samples / 8 * bitsPerSecond / frame.sampleRateHz + (head[2] >> 1 & 1);
    return frame;
}

/// A frame that two others of its sort, or the end before them, follow. Four bytes alone look like a frame too often.
std::optional<Frame> provenFrameAt(Window& file, std::int64_t offset)
{
    constexpr int followers = 2;
    const std::optional<Frame> frame = frameAt(file, offset);
    if (!frame)
        return std::nullopt;
    std::int64_t behind = offset + frame->bytes;
    for (int i = 0; i < followers && behind != file.end(); ++i) {
        const std::optional<Frame> next = frameAt(file, behind);
        if (!next || next->versionBits != frame->versionBits || next->sampleRateHz != frame->sampleRateHz)
            return std::nullopt;
        behind += next->bytes;
        if (behind > file.end())
            break;
    }
    return frame;
}

std::optional<std::int64_t> findFrame(Window& file, std::int64_t from, std::int64_t within)
{
    const std::int64_t limit = std::min(file.end(), from + within);
    for (std::int64_t offset = from; offset < limit; ++offset)
        if (provenFrameAt(file, offset))
            return offset;
    return std::nullopt;
}

/// Where the ID3v2 tags at the start end; a file may carry several.
std::int64_t behindTags(Window& file)
{
    constexpr std::int64_t headerBytes = 10;
    std::int64_t offset = 0;
    while (file.holds(offset, "ID3")) {
        const auto head = file.at(offset, headerBytes);
        if (head.size() < headerBytes)
            break;
        std::int64_t size = 0;
        for (const unsigned char byte : head.subspan(6))
            size = size << 7 | (byte & 0x7F);
        const bool footer = (head[5] & 0x10) != 0;
        offset += headerBytes + size + (footer ? headerBytes : 0);
    }
    return offset;
}

struct Information {
    std::optional<std::uint32_t> frames; ///< announced for what follows
};

std::optional<Information> informationAt(Window& file, std::int64_t offset, const Frame& frame)
{
    constexpr std::int64_t headBytes = 4;
    constexpr std::int64_t checksumBytes = 2;
    const std::int64_t sideBytes =
        frame.firstVersion() ? (frame.channels == 1 ? 17 : 32) : (frame.channels == 1 ? 9 : 17);
    // Not every encoder leaves room for the checksum.
    for (const std::int64_t place : {offset + headBytes + sideBytes, offset + headBytes + checksumBytes + sideBytes}) {
        if (!file.holds(place, "Xing") && !file.holds(place, "Info"))
            continue;
        const bool counted = (file.bigEndian(place + 4) & 1) != 0;
        return Information{counted ? std::optional(file.bigEndian(place + 8)) : std::nullopt};
    }
    const std::int64_t place = offset + headBytes + 32;
    if (file.holds(place, "VBRI"))
        return Information{file.bigEndian(place + 14)};
    return std::nullopt;
}

}

std::optional<MpegSound> walkMpegSound(int descriptor, std::int64_t length)
{
    constexpr std::int64_t blockBytes = 128;
    Window file(descriptor, length);
    if (file.holds(length - blockBytes, "TAG"))
        file.endAt(length - blockBytes);
    const std::optional<std::int64_t> first = findFrame(file, behindTags(file), std::int64_t{256} << 10);
    if (!first)
        return std::nullopt;

    MpegSound sound;
    const Frame start = *frameAt(file, *first);
    sound.sampleRateHz = start.sampleRateHz;
    sound.channels = start.channels;
    std::int64_t offset = *first;
    const std::optional<Information> information = informationAt(file, offset, start);
    if (information)
        offset += start.bytes;

    std::int64_t junkLeft = std::int64_t{1} << 20;
    while (offset < file.end()) {
        if (const std::optional<Frame> frame = frameAt(file, offset)) {
            if (offset + frame->bytes > file.end()) {
                sound.complete = false;
                break;
            }
            ++sound.frames;
            sound.bytes += frame->bytes;
            sound.seconds += static_cast<double>(frame->samples) / frame->sampleRateHz;
            offset += frame->bytes;
            continue;
        }
        const std::optional<std::int64_t> again = findFrame(file, offset, junkLeft);
        if (!again)
            break;
        junkLeft -= *again - offset;
        offset = *again;
    }
    if (information && information->frames && *information->frames > sound.frames)
        sound.complete = false;
    return sound;
}

}
