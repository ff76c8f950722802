#include "tags/file_bytes.h"

namespace tonquay::tags {

std::optional<std::uint8_t> FileBytes::at(std::int64_t position)
{
    if (position < 1)
        return std::nullopt;
    const auto size = static_cast<std::int64_t>(block_.size());
    const auto isHeld = [&] { return position >= first_ && position - first_ < count_; };
    if (!isHeld())
        load(position - (position - 1) % size);
    if (!isHeld())
        return std::nullopt;
    return std::to_integer<std::uint8_t>(block_[static_cast<std::size_t>(position - first_)]);
}

void FileBytes::load(std::int64_t first)
{
    first_ = first;
    count_ = 0;
    if (!platform::passOver(log_, file_.seek(first - 1), "Move about in a sound file"))
        return;
    if (const auto count = file_.read(block_); platform::passOver(log_, count, "Read a sound file"))
        count_ = static_cast<std::int64_t>(*count);
}

}
