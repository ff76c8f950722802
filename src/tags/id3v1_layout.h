#pragma once

#include <array>
#include <cstddef>

/// Where the fields of an ID3v1 block lie; the picture is in id3v1.h.
namespace tonquay::tags::id3v1 {

struct Place {
    std::size_t offset;
    std::size_t width;
};

inline constexpr std::array marker{std::byte{'T'}, std::byte{'A'}, std::byte{'G'}};
inline constexpr Place title{3, 30};
inline constexpr Place artist{33, 30};
inline constexpr Place album{63, 30};
inline constexpr Place year{93, 4};
inline constexpr Place comment{97, 28};
inline constexpr Place longComment{97, 30}; ///< of the older layout, which has no track
inline constexpr std::size_t zero = 125;
inline constexpr std::size_t track = 126;
inline constexpr std::size_t genre = 127;

}
