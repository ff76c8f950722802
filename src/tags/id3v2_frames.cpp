#include "tags/id3v2_frames.h"

namespace tonquay::tags {

namespace {

base::Failure noSuchFrame(std::int32_t index, std::int32_t count)
{
    return {base::Failure::Kind::invalid, "clsFrames",
            "there is no frame " + std::to_string(index) + " among " + std::to_string(count)};
}

}

base::Result<clsFrames::Frame> clsFrames::item(std::int32_t index) const
{
    if (index < 1 || index > Count())
        return noSuchFrame(index, Count());
    return frames_[static_cast<std::size_t>(index - 1)];
}

base::Status clsFrames::Remove(std::int32_t index)
{
    if (index < 1 || index > Count())
        return noSuchFrame(index, Count());
    frames_.erase(frames_.begin() + (index - 1));
    return {};
}

}
