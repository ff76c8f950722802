#pragma once

#include "base/red_book.h"
#include "base/result.h"
#include "platform/discs.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace tonquay::host {

/// One audio disc, in a drive or in an image, read in whole sectors.
///
/// A sector is 1/75 second of sound: 588 stereo frames, 2352 bytes, 16-bit signed little-endian, left first
/// (Red Book). Sector 0 is the first one after the lead-in, so a time of M:SS:FF is (M * 60 + SS) * 75 + FF.
/// What is read is what is on the disc: nothing is scaled, filled in or smoothed.
///
/// A Disc may be handed from one thread to another, but only one at a time may use it. It holds its files or its
/// drive until it is destroyed.
class Disc {
public:
    static constexpr std::size_t sectorBytes = base::red_book::bytesPerSector;

    enum class ReadEnd {
        full,
        endOfDisc,
        unreadable, ///< the drive or file gives no data at the next sector
        gone,       ///< the disc was taken out, or the image's file is no longer there
    };

    struct Read {
        std::size_t sectors; ///< whole sectors written to the buffer; what lies behind them is untouched
        ReadEnd end;         ///< why the reading stopped
    };

    virtual ~Disc() = default;

    /// In order of number; never empty. Numbers need not begin at 1, and data tracks are listed too.
    virtual const std::vector<platform::DiscTrack>& tracks() const = 0;

    /// What the disc itself or its sheet says: CD-Text first, each empty field then filled from the sheet.
    virtual const platform::DiscNames& names() const = 0;

    /// Reads as many whole sectors as `buffer` holds (its size is a multiple of sectorBytes), from `firstSector` on.
    /// Blocks until they are there. Stops early at the lead-out, and before a sector that gives no data; a second call
    /// at that sector tries it again.
    [[nodiscard]] virtual Read read(int firstSector, std::span<std::byte> buffer) = 0;
};

/// Opens a disc image by the ending of its name: `.cue`, `.toc` (cdrdao) or `.nrg` (Nero), in any case.
///
/// Fails, with the file and the line of the sheet where there is one, when the image does not add up: a missing file, a
/// file shorter than its tracks, times that run backwards or are no times, more than 99 tracks. A disc of data tracks
/// only opens; its tracks say so.
base::Result<std::unique_ptr<Disc>> openImage(const std::filesystem::path& image);

/// True when openImage() would look at a file of that name.
bool isImageName(const std::filesystem::path& name);

/// The 28-character disc identifier made from the table (MusicBrainz), for names of nameless discs.
std::string discId(const std::vector<platform::DiscTrack>& tracks);

}
