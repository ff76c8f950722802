#pragma once

#include <cstdint>
#include <optional>

namespace tonquay::host {

/// Where the sound of an Ogg file ends (RFC 3533): the place, in samples of one channel, that its last page gives, if
/// the file ends with a page that is marked as the last of its stream. Nothing for a file that breaks off or goes on
/// behind its last page, and for one that cannot be read. The place is -1 where the page gives none.
///
/// Reads the largest page there can be, 65307 bytes, from the end of a file of `length` bytes.
std::optional<std::int64_t> endOfLastPage(int descriptor, std::int64_t length);

}
