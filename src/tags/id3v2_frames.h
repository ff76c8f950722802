#pragma once

#include "tags/id3v2_frame.h"

#include <memory>
#include <span>
#include <vector>

namespace tonquay::tags {

/// The frames of a tag in the order that they stand in; the first has the number 1. Frames are shared: one that a
/// caller still has can be changed in here too.
class clsFrames {
public:
    using Frame = std::shared_ptr<clsFrame>;

    /// Add a Frame to the collection, behind the others.
    void Add(const Frame& frame) { frames_.push_back(frame); }

    /// Return a specified Frame. Fails for a number outside 1 to Count().
    base::Result<Frame> item(std::int32_t index) const;

    /// Return the number of Frames in the collection.
    std::int32_t Count() const { return static_cast<std::int32_t>(frames_.size()); }

    /// Remove a specified Frame. Those behind it move up. Fails for a number outside 1 to Count().
    base::Status Remove(std::int32_t index);

    /// Remove all frames from the collection.
    void Clear() { frames_.clear(); }

    /// All frames in their order, valid until the collection changes.
    std::span<const Frame> NewEnum() const { return frames_; }

private:
    std::vector<Frame> frames_;
};

}
