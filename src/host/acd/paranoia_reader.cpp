#include "host/acd/paranoia_reader.h"

#include "host/acd/sector_votes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>

namespace tonquay::host {

namespace {

// What every kernel takes in one request, and what is asked for after an error: the sectors behind a bad one of the
// same request are not read, so requests are small then. More than one, since readings are joined across the edges of
// requests only where those of another reading lie elsewhere.
constexpr int sectorsPerRequest = 25;
constexpr int sectorsAfterError = 3;

// So far from an error that nothing is read there again.
constexpr int sectorsBackToNormal = 2000;

// What the library wants verified beyond the sector that it gives, and some to be off by.
constexpr int sectorsAround = 48;

constexpr int wordsPerSector = CDIO_CD_FRAMESIZE_RAW / 2;

/// The drive as the library sees it: our disc below its calls. The library asks nothing of the system itself, since the
/// range of sectors is told to it and there is no handle of its own.
struct Source : cdrom_drive_t {
    ReadingTask task;
    bool gone = false;
    int lastError = -sectorsBackToNormal;
    std::vector<std::byte> elsewhere; ///< for reads whose data nobody wants
    SectorVotes votes;
    bool voting = false;
    int lastSound; ///< from here on no sound follows that would show where a reading belongs
    /// The library takes what it was told to be unread for sound when it only overlaps readings. So it is told of
    /// none, and has silence for the very sectors that give no data.
    bool fillsGaps;

    Source(const ReadingTask& reading, bool fillGaps)
        : cdrom_drive_t{},
          task(reading),
          lastSound(reading.allowed.end() - sectorsAround),
          fillsGaps(fillGaps)
    {
        opened = 1;
        // Told and not guessed: the library's guess takes noise and square waves for the wrong order.
        bigendianp = 0;
        b_swap_bytes = false;
        nsectors = sectorsPerRequest;
        enable_cdda = [](cdrom_drive_t*, int) { return 0; };
        read_audio = [](cdrom_drive_t* drive, void* buffer, lsn_t first, long count) {
            return static_cast<Source*>(drive)->read(static_cast<std::byte*>(buffer), first, count);
        };
    }

    /// Sectors that were read, or -1. The library takes ENOMEDIUM for the end of everything.
    long read(std::byte* buffer, int first, long count)
    {
        errno = 0;
        if (first < 0 || task.stop || gone) {
            errno = first < 0 ? EIO : ENOMEDIUM;
            return -1;
        }
        const std::size_t bytes = static_cast<std::size_t>(count) * Disc::sectorBytes;
        if (buffer == nullptr)
            elsewhere.resize(bytes);
        const std::span<std::byte> target = buffer != nullptr ? std::span(buffer, bytes) : elsewhere;
        int sectors = readSome(first, target);
        while (fillsGaps && buffer != nullptr && sectors < count && !task.stop && !gone)
            sectors +=
                readPastGap(first + sectors, target.subspan(static_cast<std::size_t>(sectors) * Disc::sectorBytes));
        adjustRequests(first, sectors < count);
        if (task.stop || gone) {
            errno = ENOMEDIUM;
            return -1;
        }
        return sectors;
    }

    /// As many sectors as give data at once.
    int readSome(int first, std::span<std::byte> target)
    {
        const Disc::Read got = task.disc.read(first, target);
        if (voting || first + static_cast<int>(got.sectors) > lastSound)
            votes.count(first, target.first(got.sectors * Disc::sectorBytes));
        const auto sectors = static_cast<int>(got.sectors);
        task.journal.wasRead(first, sectors);
        gone = gone || got.end == Disc::ReadEnd::gone;
        if (!gone && got.sectors * Disc::sectorBytes < target.size())
            task.journal.gaveNoData(first + sectors);
        return sectors;
    }

    /// The same behind a sector that gave no data; it is silence when it gives none at all.
    int readPastGap(int first, std::span<std::byte> target)
    {
        constexpr int tries = 5;
        for (int i = 0; i < tries && !task.stop && !gone; ++i)
            if (readSome(first, target.first(Disc::sectorBytes)) == 1)
                return 1;
        std::ranges::fill(target.first(Disc::sectorBytes), std::byte{0});
        const auto rest = target.subspan(Disc::sectorBytes);
        return 1 + (rest.empty() || task.stop || gone ? 0 : readSome(first + 1, rest));
    }

    void adjustRequests(int sector, bool failed)
    {
        if (failed)
            lastError = sector;
        nsectors = sector - lastError < sectorsBackToNormal ? sectorsAfterError : sectorsPerRequest;
    }
};

// The library's calls back have no place for whom they are for.
thread_local ReadJournal* listening = nullptr;

void heard(long word, paranoia_cb_mode_t what)
{
    if (listening == nullptr)
        return;
    const int sector = static_cast<int>(word / wordsPerSector);
    switch (what) {
    case PARANOIA_CB_FIXUP_EDGE:
    case PARANOIA_CB_FIXUP_ATOM:
    case PARANOIA_CB_FIXUP_DROPPED:
    case PARANOIA_CB_FIXUP_DUPED: listening->wasRepaired(sector); break;
    case PARANOIA_CB_SKIP:
        // It puts two sectors there that no two readings have agreed on.
        listening->wasGivenUp(sector);
        listening->wasGivenUp(sector + 1);
        break;
    default: break;
    }
}

struct ParanoiaFree {
    void operator()(cdrom_paranoia_t* paranoia) const { cdio_paranoia_free(paranoia); }
};

/// Sound in which a sample more or less at the front can be seen.
bool isDistinctive(std::span<const std::byte> sector)
{
    constexpr std::size_t frame = 4;
    return !std::equal(sector.begin() + frame, sector.end(), sector.begin());
}

class ParanoiaReader final : public SectorReader {
public:
    ParanoiaReader(Mode mode, const ReadingTask& task)
        : source_(task, mode == Mode::synchronous),
          mode_(mode),
          next_(task.wanted.first)
    {
        source_.voting = true;
        startAt(next_);
    }

    std::size_t read(std::span<std::byte> buffer) override
    {
        const std::size_t wanted =
            std::min(buffer.size() / Disc::sectorBytes, static_cast<std::size_t>(source_.task.wanted.end() - next_));
        std::size_t done = 0;
        while (done < wanted) {
            const auto sector = buffer.subspan(done * Disc::sectorBytes, Disc::sectorBytes);
            if (!(source_.voting ? readInPlace(sector) : readOn(sector)))
                break;
            settle(sector);
            ++next_;
            ++done;
        }
        return done;
    }

    [[nodiscard]] bool discIsGone() const override { return source_.gone; }

private:
    /// Has the next sector be number `sector`. Reading begins some sectors before it, so that what a drive loses at the
    /// start of its reading is lost there.
    void startAt(int sector)
    {
        const ReadingTask& task = source_.task;
        const int first = std::max(task.allowed.first, sector - sectorsAround);
        const int last = std::min(task.allowed.end(), task.wanted.end() + sectorsAround) - 1;
        constexpr int verifying = PARANOIA_MODE_FULL ^ PARANOIA_MODE_NEVERSKIP;
        paranoia_.reset(cdio_paranoia_init(&source_));
        cdio_paranoia_modeset(paranoia_.get(), mode_ == Mode::normal ? verifying : PARANOIA_MODE_OVERLAP);
        cdio_paranoia_set_range(paranoia_.get(), first, last);
        lead_ = sector - first;
    }

    bool readOn(std::span<std::byte> sector)
    {
        const std::int16_t* samples = nullptr;
        do {
            if (source_.task.stop || source_.gone)
                return false;
            listening = &source_.task.journal;
            samples = cdio_paranoia_read(paranoia_.get(), &heard);
            listening = nullptr;
        } while (samples != nullptr && lead_-- > 0);
        lead_ = 0;
        if (samples == nullptr || source_.task.stop || source_.gone)
            return false;
        std::memcpy(sector.data(), samples, Disc::sectorBytes);
        return true;
    }

    /// The library joins readings where they agree and goes by the first one for where they are. Had the drive missed
    /// the place just then, all of the track would be off. So until the first sound that shows it, the readings of each
    /// sector are counted, and the library begins anew when most of them say otherwise.
    bool readInPlace(std::span<std::byte> sector)
    {
        constexpr int tries = 10;
        for (int i = 0; i < tries; ++i) {
            if (!readOn(sector))
                return false;
            if (verdictOn(sector) != SectorVotes::Verdict::wrong)
                break;
            source_.task.journal.wasRepaired(next_);
            startAt(next_);
        }
        source_.voting = !isDistinctive(sector);
        return true;
    }

    /// What the library has given up, and what stands at the end of all sound, where it has nothing to compare with, is
    /// what most of the readings say.
    void settle(std::span<std::byte> sector)
    {
        constexpr int furtherReadings = 20;
        ReadJournal& journal = source_.task.journal;
        const bool givenUp = journal.isGivenUp(next_);
        const bool atEnd = mode_ == Mode::normal && next_ >= source_.lastSound;
        source_.votes.forgetBefore(next_);
        if (!(givenUp || atEnd) || !journal.wasEverRead(next_))
            return;
        const bool voting = std::exchange(source_.voting, true);
        SectorVotes::Verdict verdict = verdictOn(sector);
        std::vector<std::byte> reading(Disc::sectorBytes);
        for (int i = 0; i < furtherReadings && verdict == SectorVotes::Verdict::wrong; ++i) {
            if (source_.read(reading.data(), next_, 1) != 1 ||
                source_.votes.on(next_, reading) != SectorVotes::Verdict::right)
                continue;
            std::ranges::copy(reading, sector.begin());
            verdict = SectorVotes::Verdict::right;
            journal.wasRepaired(next_);
        }
        source_.voting = voting;
        if (givenUp && verdict == SectorVotes::Verdict::right)
            journal.wasSettled(next_);
        else if (verdict == SectorVotes::Verdict::wrong)
            journal.wasGivenUp(next_);
    }

    SectorVotes::Verdict verdictOn(std::span<const std::byte> sector)
    {
        constexpr int furtherReadings = 20;
        std::vector<std::byte> reading(2 * Disc::sectorBytes);
        SectorVotes::Verdict verdict = source_.votes.on(next_, sector);
        for (int i = 0; i < furtherReadings && verdict == SectorVotes::Verdict::open; ++i) {
            // From elsewhere, or the drive would answer from its memory.
            source_.read(nullptr, i % 2 == 0 ? next_ + farAway : std::max(next_ - farAway, 0), 1);
            source_.read(reading.data(), std::max(next_ - i % 2, 0), 2);
            verdict = source_.votes.on(next_, sector);
        }
        return verdict;
    }

    static constexpr int farAway = 1500; ///< sectors; more than drives remember

    Source source_;
    Mode mode_;
    std::unique_ptr<cdrom_paranoia_t, ParanoiaFree> paranoia_;
    int next_;     ///< the sector that is delivered next
    int lead_ = 0; ///< sectors before it that the library gives first
};

}

std::unique_ptr<SectorReader> makeParanoiaReader(SectorReader::Mode mode, const ReadingTask& task)
{
    return std::make_unique<ParanoiaReader>(mode, task);
}

}
