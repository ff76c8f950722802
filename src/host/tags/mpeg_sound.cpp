#include "host/tags/mpeg_sound.h"

#include "host/posix/descriptor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace tonquay::host {

namespace {

/// A file seen through one buffer that moves along.
class Window {
public:
    Window(int descriptor, std::int64_t end, std::size_t block) : descriptor_(descriptor), end_(end), buffer_(block) {}

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
        const auto there = static_cast<std::size_t>(end_ - offset);
        const auto wanted = std::span(buffer_).first(std::min(buffer_.size(), there));
        start_ = offset;
        held_ = readWhatIsThere(descriptor_, std::as_writable_bytes(wanted), offset);
    }

    int descriptor_;
    std::int64_t end_;
    std::int64_t start_ = 0;
    std::size_t held_ = 0;
    std::vector<unsigned char> buffer_;
};

struct Frame {
    int versionBits = 0;
    int sampleRateHz = 0;
    int channels = 0;
    int samples = 0;
    int bitsPerSecond = 0;
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
    frame.bitsPerSecond = 1000 * (frame.firstVersion() ? kbpsFirst[kbps] : kbpsLater[kbps]);
    frame.bytes = frame.samples / 8 * frame.bitsPerSecond / frame.sampleRateHz + (head[2] >> 1 & 1);
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
    std::optional<std::uint32_t> bytes;  ///< likewise, those of this frame included
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
        Information information;
        const std::uint32_t flags = file.bigEndian(place + 4);
        std::int64_t next = place + 8;
        if ((flags & 1) != 0)
            information.frames = file.bigEndian(std::exchange(next, next + 4));
        if ((flags & 2) != 0)
            information.bytes = file.bigEndian(next);
        return information;
    }
    const std::int64_t place = offset + headBytes + 32;
    if (file.holds(place, "VBRI"))
        return Information{.frames = file.bigEndian(place + 14), .bytes = file.bigEndian(place + 10)};
    return std::nullopt;
}

/// The file then ends where the tags at its end begin.
void leaveOutEndTags(Window& file)
{
    constexpr std::int64_t blockBytes = 128;
    constexpr std::int64_t apeBytes = 32;
    // One look for both.
    file.at(std::max<std::int64_t>(file.end() - blockBytes - apeBytes, 0), blockBytes + apeBytes);
    if (file.holds(file.end() - blockBytes, "TAG"))
        file.endAt(file.end() - blockBytes);
    // An APE tag ends with its size, head left out, in little-endian bytes.
    const std::int64_t ape = file.end() - apeBytes;
    if (!file.holds(ape, "APETAGEX"))
        return;
    std::uint32_t size = 0;
    const auto bytes = file.at(ape + 12, 4);
    for (std::size_t i = bytes.size(); i > 0; --i)
        size = size << 8 | bytes[i - 1];
    std::int64_t begin = file.end() - std::int64_t{size};
    if (file.holds(begin - apeBytes, "APETAGEX"))
        begin -= apeBytes;
    if (begin > 0 && begin < ape)
        file.endAt(begin);
}

/// Where the sound of a file begins, and what it begins with.
struct Start {
    std::int64_t offset = 0;   ///< of the first frame that is sound
    Frame frame{};             ///< of the first frame, be it sound or information
    Information information{}; ///< nothing is known without such a frame
};

/// Leaves the tags at the file's end out first.
std::optional<Start> findStart(Window& file)
{
    leaveOutEndTags(file);
    const std::optional<std::int64_t> first = findFrame(file, behindTags(file), std::int64_t{256} << 10);
    if (!first)
        return std::nullopt;
    Start start{.offset = *first, .frame = *frameAt(file, *first)};
    if (const std::optional<Information> information = informationAt(file, *first, start.frame)) {
        start.information = *information;
        start.offset += start.frame.bytes;
    }
    return start;
}

/// Whether what is announced is what is there. A file that was cut or joined with another still announces what it was.
bool announcesThis(const Information& announced, std::int64_t bytes)
{
    constexpr std::int64_t leastFrame = 24;
    constexpr std::int64_t tolerance = 4096;
    if (!announced.frames || *announced.frames == 0 || *announced.frames > bytes / leastFrame)
        return false;
    return announced.bytes && std::abs(bytes - std::int64_t{*announced.bytes}) <= tolerance;
}

/// Whether frames at a few places between all have the first one's bitrate.
bool hasOneBitrate(Window& file, const Start& start)
{
    constexpr std::int64_t places = 5;
    constexpr std::int64_t within = 4096;
    for (std::int64_t place = 1; place < places; ++place) {
        const auto offset = findFrame(file, start.offset + (file.end() - start.offset) * place / places, within);
        if (!offset || frameAt(file, *offset)->bitsPerSecond != start.frame.bitsPerSecond)
            return false;
    }
    return true;
}

MpegSound soundOf(const Frame& frame)
{
    MpegSound sound;
    sound.sampleRateHz = frame.sampleRateHz;
    sound.channels = frame.channels;
    return sound;
}

}

std::optional<MpegSound> walkMpegSound(int descriptor, std::int64_t length)
{
    constexpr std::size_t block = 65536;
    Window file(descriptor, length, block);
    const std::optional<Start> start = findStart(file);
    if (!start)
        return std::nullopt;

    MpegSound sound = soundOf(start->frame);
    std::int64_t offset = start->offset;
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
    if (start->information.frames && *start->information.frames > sound.frames)
        sound.complete = false;
    return sound;
}

std::optional<MpegSound> estimateMpegSound(int descriptor, std::int64_t length)
{
    constexpr std::size_t block = 4096;
    Window file(descriptor, length, block);
    const std::optional<Start> start = findStart(file);
    if (!start)
        return std::nullopt;

    MpegSound sound = soundOf(start->frame);
    sound.bytes = file.end() - start->offset;
    const Frame& frame = start->frame;
    if (announcesThis(start->information, sound.bytes + frame.bytes)) {
        sound.frames = *start->information.frames;
        sound.seconds = static_cast<double>(sound.frames) * frame.samples / frame.sampleRateHz;
        return sound;
    }
    if (start->information.frames || !hasOneBitrate(file, *start))
        return walkMpegSound(descriptor, length);
    sound.seconds = static_cast<double>(sound.bytes) * 8 / frame.bitsPerSecond;
    sound.frames = std::llround(sound.seconds * frame.sampleRateHz / frame.samples);
    return sound;
}

}
