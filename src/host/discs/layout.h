#pragma once

#include "base/red_book.h"
#include "host/discs/sheet.h"

#include <span>

namespace tonquay::host {

/// A run of bytes of the program area that comes from one place. Runs begin and end in the middle of a sector when a
/// sheet cuts its files by samples.
struct Stretch {
    enum class From {
        file,
        silence,
        nowhere, ///< data tracks, and what the image does not hold: sectors that give no sound
    };

    std::int64_t first = 0; ///< counted in sound bytes, Disc::sectorBytes a sector, from sector 0
    std::int64_t bytes = 0;
    From from = From::silence;
    int file = 0;                                     ///< index into Sheet::files
    std::int64_t offset = 0;                          ///< of the first byte, in that file or its decoded sound
    int sectorBytes = base::red_book::bytesPerSector; ///< from one stored sector to the next
};

/// The disc that a sheet and its files make: the table, and for each place in the program area where its sound is.
struct Layout {
    std::vector<platform::DiscTrack> tracks;
    std::vector<Stretch> stretches; ///< in order, without gaps, up to the lead-out
    int sectors = 0;                ///< of the program area
};

/// Puts a sheet together with the lengths of its files, in the order of Sheet::files; of a sound file: of its decoded
/// sound. Fails, with the line of the sheet, when a file is too short, a track has no sound, or the whole is longer
/// than a disc can be. An incomplete sector at the end of a raw file is left out.
///
/// A track runs from its index 1 to that of the next. An audio track before a data track ends where its own pieces
/// end: the gap before data is no sound.
base::Result<Layout> layOut(const Sheet& sheet, std::span<const std::int64_t> lengths);

}
