#pragma once

#include "host/discs/sheet.h"

#include <span>

/// Nero images: the sectors first, then a chain of chunks that describes them, then a footer with the chain's place.
/// All numbers are big-endian. The first version has 32-bit offsets ("NERO", DAOI, CUES, ETNF), the second 64-bit
/// ones ("NER5", DAOX, CUEX, ETN2).
namespace tonquay::host {

/// Bytes at the end of the file that nrgChain() wants to see.
constexpr std::size_t nrgFooterBytes = 12;

/// Where the chunks are, from the last nrgFooterBytes of a file of `fileBytes`. Fails when this is no such image, or
/// its chunks lie outside of it or are larger than maxSheetBytes.
struct NrgChain {
    std::int64_t offset = 0;
    std::int64_t bytes = 0;
    bool second = false; ///< the second version
};
base::Result<NrgChain> nrgChain(std::span<const std::byte> footer, std::int64_t fileBytes, const std::string& path);

/// Reads the chunks. The one file of the sheet is the image itself, under its own name.
///
/// The first pregap of a disc lies before sector 0 for its two seconds, so that part is in the image but not in the
/// program area. Where a later session or, in track-at-once, a track begins behind the end of the one before, the
/// sectors between give no sound.
base::Result<Sheet> parseNrg(std::span<const std::byte> chunks, const NrgChain& chain, const std::string& path);

}
