#pragma once

#include "tags/frame_ids.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

/// The twelve values of an ID3v2 tag that are shown and changed, by their places: those of FrameValueID from 0 on.
namespace tonquay::utility {

inline constexpr std::size_t fieldCount = 12;

using Values = std::array<std::wstring, fieldCount>;

/// The values that a person has changed; one that is empty takes its frame out.
using Changes = std::array<std::optional<std::wstring>, fieldCount>;

constexpr tags::FrameValueID idOf(std::size_t field)
{
    return static_cast<tags::FrameValueID>(static_cast<std::int32_t>(field) + 1);
}

constexpr std::size_t placeOf(tags::FrameValueID id)
{
    return static_cast<std::size_t>(id) - 1;
}

}
