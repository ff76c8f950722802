#include "tags/file_bytes.h"

namespace tonquay::tags {

/// Reads the block of a position. False when it has no such byte.
bool FileBytes::load(std::int64_t position)
{
    if (position < 1)
        return false;
    first_ = position - (position - 1) % static_cast<std::int64_t>(block_.size());
    count_ = 0;
    if (!platform::passOver(log_, file_.seek(first_ - 1), "Move about in a sound file"))
        return false;
    if (const auto count = file_.read(block_); platform::passOver(log_, count, "Read a sound file"))
        count_ = static_cast<std::int64_t>(*count);
    return holds(position);
}

}
