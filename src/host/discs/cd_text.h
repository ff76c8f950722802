#pragma once

#include "platform/discs.h"

#include <cstddef>
#include <span>

namespace tonquay::host {

/// The names in the CD-Text packs of a disc: 18 bytes each, as they stand in the lead-in (Red Book, IEC 60908).
///
/// Only the first block (language) is read, and no text of two-byte characters. Texts that are valid UTF-8 are taken
/// as that, others as Windows-1252. `firstTrack` is the number of the title at 0. Checksums are not looked at: images
/// are often written without them. An incomplete last pack is passed over.
platform::DiscNames parseCdText(std::span<const std::byte> packs, int firstTrack);

}
