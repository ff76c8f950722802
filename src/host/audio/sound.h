#pragma once

#include "base/red_book.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

/// Sound as it stands on an audio disc: 44100 Hz, 16-bit signed little-endian, left first (Red Book).
namespace tonquay::host {

constexpr std::int32_t framesPerSecond = base::red_book::samplesPerSecond;
constexpr std::size_t frameBytes = base::red_book::bytesPerSample;

/// The largest distance from silence on each side, 0 to 32768.
struct Peaks {
    std::int32_t left = 0;
    std::int32_t right = 0;
};

inline std::int32_t sampleAt(std::span<const std::byte> bytes, std::size_t at)
{
    const auto low = std::to_integer<std::uint32_t>(bytes[at]);
    const auto high = std::to_integer<std::uint32_t>(bytes[at + 1]);
    return static_cast<std::int16_t>(low | (high << 8U));
}

/// The peaks of whole frames, no smaller than those given.
inline Peaks peaksOf(std::span<const std::byte> frames, Peaks peaks = {})
{
    for (std::size_t at = 0; at + frameBytes <= frames.size(); at += frameBytes) {
        const std::int32_t left = sampleAt(frames, at);
        const std::int32_t right = sampleAt(frames, at + 2);
        peaks.left = std::max({peaks.left, left, -left});
        peaks.right = std::max({peaks.right, right, -right});
    }
    return peaks;
}

/// Left in the low half, right in the high half, as BASS_ChannelGetLevel answers.
constexpr std::int32_t levelWord(Peaks peaks)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(peaks.left) |
                                     (static_cast<std::uint32_t>(peaks.right) << 16U));
}

}
