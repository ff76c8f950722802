#pragma once

#include "platform/id3v2_contents.h"

#include <string_view>

namespace tonquay::host {

/// Fills the fields of a frame from the start of its body, by what its identifier says that a body looks like. A body
/// that ends early leaves the rest empty; of an identifier without texts there is nothing to fill.
///
/// The texts follow ID3v2.2 to 2.4: Latin (read as Windows-1252), UTF-16 with a mark or without, UTF-8.
void fillFields(platform::Id3v2Contents::Frame& frame, std::string_view body);

}
