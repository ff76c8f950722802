#pragma once

#include "platform/decode_report.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

namespace tonquay::host {

/// A run of sectors of a disc.
struct SectorRun {
    int first = 0;
    int count = 0;

    [[nodiscard]] int end() const { return first + count; }
    [[nodiscard]] bool has(int sector) const { return sector >= first && sector < end(); }
};

/// What became of each sector while a run of them was read. Whoever reads writes it, any thread may look at it. Sectors
/// outside the run are nobody's concern.
class ReadJournal {
public:
    explicit ReadJournal(SectorRun run);

    void wasRead(int first, int count); ///< data came
    void gaveNoData(int sector);
    void wasRepaired(int sector);
    void wasGivenUp(int sector);
    void wasSettled(int sector); ///< it was given up and is repaired after all
    [[nodiscard]] bool isGivenUp(int sector) const;
    [[nodiscard]] bool wasEverRead(int sector) const;

    /// Counts the answers of the drive, good and bad: it stands still while the drive hangs.
    [[nodiscard]] std::uint64_t answers() const { return answers_; }

    /// The seconds of the first `delivered` sectors of the run, counted from sector `origin`. A sector that was
    /// delivered without ever having been read counts as given up.
    [[nodiscard]] platform::ReadTroubles troubles(int delivered, int origin) const;

private:
    using Marks = std::uint8_t;

    void mark(int sector, Marks marks);
    Marks marksOf(int sector) const;

    const SectorRun run_;
    std::atomic<std::uint64_t> answers_{0};
    mutable std::mutex mutex_;
    std::vector<Marks> marks_;
};

}
