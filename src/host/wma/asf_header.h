#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// What the library leaves out of an ASF header, or cannot know: fields of its File Properties Object and of its
/// Content Description Object (ASF 01.20.03, 3.2 and 3.10).
namespace tonquay::host::asf {

/// Says that the lengths in the header do not hold, or that they do. False when the header has no such object.
bool setBroadcast(std::span<std::byte> header, bool broadcast);

/// Sets how long the file plays, in units of 100 ns, the time that players gather data before they begin left out.
/// False when the header has no such object.
bool setPlayTime(std::span<std::byte> header, std::int64_t time);

/// Puts a text into the empty description beside title and author, where most players look for it, and tells the
/// header's and the file's new size. The result is the number of bytes by which the header has grown; 0, and nothing
/// done, when there is no such object or it has a description.
std::size_t putDescription(std::vector<std::byte>& header, std::wstring_view text);

}
