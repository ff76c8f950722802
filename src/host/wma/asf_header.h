#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The fields of an ASF header that change after it was written: they stand in its File Properties Object (ASF
/// specification, section 3.2).
namespace tonquay::host::asf {

/// Says that the lengths in the header do not hold, or that they do. False when the header has no such object.
bool setBroadcast(std::span<std::byte> header, bool broadcast);

/// Sets how long the file plays, in units of 100 ns, the time that players gather data before they begin left out.
/// False when the header has no such object.
bool setPlayTime(std::span<std::byte> header, std::int64_t time);

}
