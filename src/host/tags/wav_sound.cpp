#include "host/tags/wav_sound.h"

#include "host/posix/descriptor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace tonquay::host {

namespace {

/// The bytes at the start of a chunk; those behind the file's end are 0.
struct Bytes {
    std::array<std::byte, 24> held{};

    Bytes(int descriptor, std::int64_t offset) { readWhatIsThere(descriptor, held, offset); }

    std::uint32_t number(std::size_t offset, std::size_t count) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = offset + count; i > offset; --i)
            value = value << 8 | std::to_integer<std::uint32_t>(held[i - 1]);
        return value;
    }

    bool has(std::size_t offset, std::string_view mark) const
    {
        return std::ranges::equal(std::span(held).subspan(offset, mark.size()), mark,
                                  [](std::byte byte, char c) { return byte == static_cast<std::byte>(c); });
    }
};

}

std::optional<WavSound> wavSound(int descriptor, std::int64_t length)
{
    constexpr std::int64_t headBytes = 8;
    constexpr std::int64_t firstChunk = 12;
    const Bytes start(descriptor, 0);
    const bool large = start.has(0, "RF64");
    if ((!large && !start.has(0, "RIFF")) || !start.has(8, "WAVE"))
        return std::nullopt;
    WavSound sound;
    std::int64_t offset = firstChunk;
    for (int chunksLeft = 1000; chunksLeft > 0 && offset + headBytes <= length; --chunksLeft) {
        const Bytes chunk(descriptor, offset);
        const std::int64_t claimed = chunk.number(4, 4);
        if (chunk.has(0, "fmt ")) {
            sound.channels = static_cast<int>(chunk.number(10, 2));
            sound.sampleRateHz = static_cast<int>(std::min(chunk.number(12, 4), std::uint32_t{INT32_MAX}));
            sound.bytesPerSecond = chunk.number(16, 4);
        } else if (chunk.has(0, "data")) {
            const std::int64_t there = length - offset - headBytes;
            // A header that was never finished, and the one of a large file, give no size of their own.
            const bool unsaid = large || claimed == 0;
            sound.bytes = unsaid ? there : std::min(claimed, there);
            sound.complete = large || (claimed > 0 && claimed <= there);
            return sound.bytesPerSecond > 0 ? std::optional(sound) : std::nullopt;
        }
        offset += headBytes + claimed + claimed % 2;
    }
    return std::nullopt;
}

}
