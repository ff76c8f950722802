#pragma once

#include "tags/id3v2_tag.h"
#include "utility/fields.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What stands in a tag, what a person has changed, and the tag that becomes of both.
namespace tonquay::utility {

struct PlannedFrame {
    std::size_t field = 0;
    std::int32_t bytes = 0; ///< of its body
};

/// The frames that would be written, in their order.
std::vector<PlannedFrame> plannedFrames(const tags::clsFrames& frames, const Changes& changes);

/// Makes them so. A changed value becomes plain text: a frame in UTF-16, or one that is packed, would not be what its
/// encoding and flags say any more, so it loses them, and its description with them.
void applyChanges(tags::clsID3v2& tag, const Changes& changes);

/// Text of one byte a letter, and no flags that say what else was done to it.
bool isPlain(const tags::clsFrame& frame);

/// The first frame of a field; null when there is none.
const tags::clsFrame* frameOf(const tags::clsFrames& frames, std::size_t field);

/// The description of a comment or a web link as it is stored, NULs and all; empty for other frames.
std::wstring descriptionOf(const tags::clsFrame& frame);

/// What is wrong, for other programs or for this one, with what would be written; a line each.
std::vector<std::wstring> misreadings(const tags::clsFrames& frames, const Changes& changes);

}
