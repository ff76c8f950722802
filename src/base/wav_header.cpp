#include "base/wav_header.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string_view>

namespace tonquay::base {

namespace {

constexpr std::uint32_t formatChunkBytes = 16;
constexpr std::uint16_t pcm = 1;

void put(std::span<std::byte> out, std::size_t offset, std::string_view id)
{
    std::ranges::transform(id, out.begin() + static_cast<std::ptrdiff_t>(offset),
                           [](char c) { return static_cast<std::byte>(c); });
}

void put(std::span<std::byte> out, std::size_t offset, std::uint32_t value, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; ++i)
        out[offset + i] = static_cast<std::byte>(value >> (8 * i) & 0xFF);
}

}

WaveHeader waveHeader(const WaveFormat& format)
{
    const auto blockAlign = static_cast<std::uint16_t>(format.channels * format.bitsPerSample / 8);
    WaveHeader header{};
    put(header.riff, 0, "RIFF");
    put(header.riff, 8, "WAVE");
    put(header.format, 0, "fmt ");
    put(header.format, 4, formatChunkBytes, 4);
    put(header.format, 8, pcm, 2);
    put(header.format, 10, format.channels, 2);
    put(header.format, 12, format.samplesPerSecond, 4);
    put(header.format, 16, format.samplesPerSecond * blockAlign, 4);
    put(header.format, 20, blockAlign, 2);
    put(header.format, 22, format.bitsPerSample, 2);
    put(header.data, 0, "data");
    return header;
}

std::array<std::byte, 4> littleEndian(std::uint32_t value)
{
    std::array<std::byte, 4> bytes{};
    put(bytes, 0, value, bytes.size());
    return bytes;
}

std::uint32_t WaveHeaderBytes::number(std::size_t offset, std::size_t length) const
{
    std::uint32_t value = 0;
    for (std::size_t i = length; i > 0; --i)
        value = value << 8 | std::to_integer<std::uint32_t>(bytes[offset + i - 1]);
    return value;
}

bool WaveHeaderBytes::has(std::size_t offset, std::string_view mark) const
{
    return std::memcmp(&bytes[offset], mark.data(), mark.size()) == 0;
}

}
