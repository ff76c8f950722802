#pragma once

#include <cstdint>

/// The numbers of an audio disc (Red Book): stereo sound of 16 bits a sample, stored in sectors of 1/75 second.
namespace tonquay::base::red_book {

inline constexpr int samplesPerSecond = 44100; ///< of each side
inline constexpr int channels = 2;
inline constexpr int bitsPerSample = 16;
inline constexpr int bytesPerSample = 4; ///< both sides
inline constexpr std::int64_t bytesPerSecond = std::int64_t{samplesPerSecond} * bytesPerSample;
inline constexpr int sectorsPerSecond = 75;
inline constexpr std::int64_t samplesPerSector = samplesPerSecond / sectorsPerSecond;
inline constexpr std::int64_t bytesPerSector = samplesPerSector * bytesPerSample;

/// The sector at a time of the table of contents.
constexpr std::int64_t sectorAt(std::int64_t minutes, std::int64_t seconds, std::int64_t frames)
{
    return (minutes * 60 + seconds) * sectorsPerSecond + frames;
}

}
