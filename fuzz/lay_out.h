#pragma once

#include "host/discs/layout.h"

#include <cstdlib>

namespace tonquay::fuzz {

/// Lays a parsed sheet out with files of a few lengths, and stops the run when the outcome contradicts itself.
inline void layOutAndCheck(const host::Sheet& sheet)
{
    constexpr std::int64_t sectorBytes = 2352;
    for (const std::int64_t length : {std::int64_t{0}, std::int64_t{1'000'000}, std::int64_t{800} << 20}) {
        const std::vector<std::int64_t> lengths(sheet.files.size(), length);
        const auto layout = host::layOut(sheet, lengths);
        if (!layout)
            continue;
        std::int64_t end = 0;
        for (const host::Stretch& stretch : layout->stretches) {
            const bool inFile = stretch.from == host::Stretch::From::file;
            const std::int64_t stored =
                stretch.sectorBytes == sectorBytes ? stretch.bytes : stretch.bytes / sectorBytes * stretch.sectorBytes;
            if (stretch.first != end || stretch.bytes <= 0 || (inFile && stretch.offset + stored > length))
                std::abort();
            end += stretch.bytes;
        }
        int last = -1;
        for (const platform::DiscTrack& track : layout->tracks) {
            if (track.firstSector <= last || track.sectorCount <= 0 ||
                track.firstSector + track.sectorCount > layout->sectors)
                std::abort();
            last = track.firstSector;
        }
        if (end != layout->sectors * sectorBytes)
            std::abort();
    }
}

}
