#pragma once

#include "host/acd/read_journal.h"
#include "host/discs/disc.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <span>

namespace tonquay::host {

/// A way of getting a run of sectors from a disc, in order, whatever it takes.
///
/// It does not stop at a sector without data: it tries again as often as its way of reading says, then puts silence
/// there and goes on. The journal has it all.
class SectorReader {
public:
    /// In the order of their numbers.
    enum class Mode {
        normal,      ///< every sample is read twice at least, and differences are settled by reading on
        synchronous, ///< readings overlap, and are joined where they agree
        burst,       ///< each sector is read once
    };

    virtual ~SectorReader() = default;

    /// Fills the buffer, whole sectors, with the next ones of the run. Fewer: the run is through, the disc is gone, or
    /// `stop` was set. Blocks for as long as the drive does.
    virtual std::size_t read(std::span<std::byte> buffer) = 0;

    /// The disc was taken out.
    [[nodiscard]] virtual bool discIsGone() const = 0;
};

/// What a reader works on; all of it outlives the reader.
struct ReadingTask {
    Disc& disc;
    SectorRun wanted;  ///< what is delivered
    SectorRun allowed; ///< what may be looked at for comparison: the wanted sectors and their neighbours of sound
    ReadJournal& journal;
    const std::atomic<bool>& stop;
};

/// Never null.
std::unique_ptr<SectorReader> makeSectorReader(SectorReader::Mode mode, const ReadingTask& task);

}
