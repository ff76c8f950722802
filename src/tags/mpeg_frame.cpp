#include "tags/mpeg_frame.h"

#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string_view>

namespace tonquay::tags {

namespace {

using Bitrates = std::array<std::int16_t, 16>;
using SampleRates = std::array<std::int16_t, 4>;

constexpr Bitrates bitrates1{128, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 128};
constexpr Bitrates bitrates2{128, 128, 16, 24, 32, 128, 128, 56, 64, 128, 128, 128, 128, 128, 128, 128};
constexpr SampleRates sampleRates1{44, 48, 32, 44};
constexpr SampleRates sampleRates2{22, 24, 16, 44};

/// By the upper bits of the header's last byte; 4 is what the largest ones are rounded up to.
constexpr std::array<std::int16_t, 5> channelCodes{1, 2, 3, 0, 1};

// A frame begins with twelve bits that are set.
constexpr std::byte frameMark{255};
constexpr std::uint8_t leastSecond = 240;

constexpr int xingFlags = 4;
constexpr int xingFrames = 8;
constexpr int xingBytes = 12;

/// Moves a position on; false, and it stays, when that leads out of its 16 bits.
bool advance(std::int16_t& position, int distance)
{
    const int moved = position + distance;
    if (moved < std::numeric_limits<std::int16_t>::min() || moved > std::numeric_limits<std::int16_t>::max())
        return false;
    position = static_cast<std::int16_t>(moved);
    return true;
}

std::uint8_t headerByte(FileBytes& file, std::int16_t position, int distance)
{
    return advance(position, distance) ? file.at(position).value_or(0) : std::uint8_t{0};
}

template <class Table>
std::int16_t rate(const Table& table1, const Table& table2, std::int16_t version, std::size_t index)
{
    if (version == 0)
        return 0;
    return version == 1 ? table1[index] : table2[index];
}

/// From the start of a frame to its Xing header, behind the side information of Layer III.
int xingDistance(std::int16_t version, std::int16_t channelCode)
{
    const bool isMono = channelCode == 0;
    if (version == 1)
        return isMono ? 21 : 36;
    return isMono ? 13 : 21;
}

std::int64_t xingNumber(FileBytes& file, std::int16_t position, int distance)
{
    return advance(position, distance) ? ReadBigEndian32(file, position) : 0;
}

}

std::int16_t FindFrameSync(FileBytes& file, std::int16_t start)
{
    constexpr std::int64_t last = std::numeric_limits<std::int16_t>::max();
    for (std::int64_t position = start; position < last; ++position) {
        const auto held = file.from(position);
        if (held.empty())
            return -1;
        const auto mark = std::ranges::find(held, frameMark);
        position += mark - held.begin();
        if (mark == held.end())
            --position;
        else if (position < last && file.at(position + 1).value_or(0) >= leastSecond)
            return static_cast<std::int16_t>(position);
    }
    return -1;
}

float GetMpegVersion(FileBytes& file, std::int16_t position)
{
    constexpr std::array<float, 4> versions{2.5F, 0, 2, 1};
    return versions[(headerByte(file, position, 1) & 24U) / 8];
}

std::int16_t GetBitrate(FileBytes& file, std::int16_t position, std::int16_t version)
{
    return rate(bitrates1, bitrates2, version, (headerByte(file, position, 2) & 240U) / 16);
}

float GetSampleRate(FileBytes& file, std::int16_t position, std::int16_t version)
{
    return rate(sampleRates1, sampleRates2, version, (headerByte(file, position, 2) & 12U) / 4);
}

std::int16_t GetChannelMode(FileBytes& file, std::int16_t position)
{
    const double bits = (headerByte(file, position, 3) & 240U) / 64.0;
    return channelCodes[static_cast<std::size_t>(base::roundHalfEven(bits))];
}

bool HasXingHeader(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode)
{
    if (!advance(position, xingDistance(version, channelCode)))
        return false;
    std::int64_t place = position;
    for (const char letter : std::string_view("Xing"))
        if (file.at(place++) != static_cast<std::uint8_t>(letter))
            return false;
    return true;
}

std::int64_t GetXingFlags(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode)
{
    return xingNumber(file, position, xingDistance(version, channelCode) + xingFlags);
}

std::int64_t GetXingFrames(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode)
{
    return xingNumber(file, position, xingDistance(version, channelCode) + xingFrames);
}

std::int64_t GetXingBytes(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode)
{
    return xingNumber(file, position, xingDistance(version, channelCode) + xingBytes);
}

std::int64_t ReadBigEndian32(FileBytes& file, std::int16_t position)
{
    LastingByte byte(file);
    std::int64_t number = 0;
    for (std::int64_t place = position; place < std::int64_t{position} + 4; ++place)
        number = number * 256 + byte.at(place);
    return number;
}

}
