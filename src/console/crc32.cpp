#include "console/crc32.h"

#include <array>

namespace tonquay::console {

namespace {

// Eight bytes a step: tables[k] moves a byte's share on by k further bytes.
constexpr std::size_t stride = 8;
using Tables = std::array<std::array<std::uint32_t, 256>, stride>;

constexpr Tables makeTables()
{
    constexpr std::uint32_t polynomial = 0xEDB88320;
    Tables tables{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1) != 0 ? polynomial : 0);
        tables[0][i] = value;
    }
    for (std::size_t k = 1; k < stride; ++k)
        for (std::size_t i = 0; i < 256; ++i)
            tables[k][i] = (tables[k - 1][i] >> 8) ^ tables[0][tables[k - 1][i] & 0xFF];
    return tables;
}

constexpr Tables tables = makeTables();

}

std::uint32_t crc32(std::uint32_t before, std::span<const std::byte> bytes)
{
    std::uint32_t value = ~before;
    for (; bytes.size() >= stride; bytes = bytes.subspan(stride)) {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < stride; ++i) {
            const std::uint32_t share = i < 4 ? (value >> (8 * i)) & 0xFF : 0;
            next ^= tables[stride - 1 - i][(share ^ std::to_integer<std::uint32_t>(bytes[i])) & 0xFF];
        }
        value = next;
    }
    for (const std::byte b : bytes)
        value = (value >> 8) ^ tables[0][(value ^ std::to_integer<std::uint32_t>(b)) & 0xFF];
    return ~value;
}

}
