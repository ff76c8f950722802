#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tonquay::base {

/// The sound in a plain RIFF WAVE file.
struct WaveFormat {
    std::uint16_t channels = 2;
    std::uint32_t samplesPerSecond = 44100;
    std::uint16_t bitsPerSample = 16;
};

/// The three records that make the canonical 44-byte header of a RIFF WAVE file with PCM sound, little-endian, both
/// sizes still 0. They are kept apart and written one after the other.
struct WaveHeader {
    std::array<std::byte, 12> riff;
    std::array<std::byte, 24> format;
    std::array<std::byte, 8> data;
};

inline constexpr std::int64_t waveHeaderBytes = 44;
inline constexpr std::int64_t riffSizeOffset = 4;  ///< holds the bytes behind it: data size + 36
inline constexpr std::int64_t dataSizeOffset = 40; ///< holds the bytes of sound

WaveHeader waveHeader(const WaveFormat& format);

/// The same 44 bytes as they were read from a file.
struct WaveHeaderBytes {
    std::array<std::byte, waveHeaderBytes> bytes{};

    /// The little-endian number of `length` bytes at `offset`.
    std::uint32_t number(std::size_t offset, std::size_t length) const;

    /// The four letters of a mark stand there.
    bool has(std::size_t offset, std::string_view mark) const;
};

/// A size field.
std::array<std::byte, 4> littleEndian(std::uint32_t value);

}
