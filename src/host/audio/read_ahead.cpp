#include "host/audio/read_ahead.h"

#include "host/audio/background_thread.h"
#include "host/audio/bell.h"
#include "host/audio/checksum.h"
#include "host/audio/sound.h"
#include "host/audio/thread_reaper.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <mutex>

namespace tonquay::host {

namespace {

constexpr int longRun = 75;
constexpr int shortRun = 15;
constexpr std::size_t runBytes = longRun * Disc::sectorBytes;
constexpr std::chrono::microseconds quickSector{150};
constexpr std::uint64_t slotCount = 8;

/// One run of sectors. A slot belongs to the reader until it is published, then to the consumer until it is released.
struct Slot {
    std::unique_ptr<std::byte[]> data = std::make_unique_for_overwrite<std::byte[]>(runBytes);
    std::size_t begin = 0;
    std::size_t size = 0;
    std::uint32_t generation = 0;
    std::uint32_t checksumBefore = 0;          ///< of all runs before this one
    ReadAhead::End end = ReadAhead::End::none; ///< what comes behind the data
    int badSector = -1;
};

/// Where the reader is.
struct Place {
    std::uint32_t generation = 0;
    int sector = 0;
    std::size_t skip = 0; ///< bytes of the next sector that nobody wants
    std::uint32_t checksum = 0;
    bool atEnd = false;
    bool quick = false; ///< the last read cost next to nothing
};

}

/// What both threads share; the last of them deletes it.
struct ReadAhead::Work {
    std::array<Slot, slotCount> slots;
    std::atomic<std::uint64_t> published{0};
    std::atomic<std::uint64_t> released{0};
    Bell readerBell;
    Bell dataBell;

    Stretch stretch;
    bool wantsChecksum = false;
    std::atomic<bool> stop{false};
    std::atomic<std::int64_t> target{0};
    std::atomic<std::uint32_t> generation{1};
    std::atomic<std::uint32_t> drainedGeneration{0};

    std::mutex callMutex; ///< held while whenDrained runs, so that none runs after the destructor
    DrainedCall whenDrained;

    // The consumer's own.
    bool holding = false;
    std::size_t offset = 0;

    BackgroundThread reading;

    Slot& front() { return slots[released.load(std::memory_order_relaxed) % slotCount]; }

    void run(Disc& disc);
    void tellDrained();
    std::uint64_t slotsInUse() const;
    int runFrom(const Place& place) const;
    void fill(Slot& slot, Place& place, Disc& disc) const;
};

void ReadAhead::Work::run(Disc& disc)
{
    Place place;
    while (!stop.load(std::memory_order_acquire)) {
        tellDrained();
        const std::uint32_t wanted = generation.load(std::memory_order_acquire);
        if (place.generation != wanted) {
            const auto position = static_cast<std::size_t>(target.load(std::memory_order_acquire));
            place = {.generation = wanted,
                     .sector = stretch.firstSector + static_cast<int>(position / Disc::sectorBytes),
                     .skip = position % Disc::sectorBytes};
        }
        if (place.atEnd || slotsInUse() == slotCount) {
            readerBell.wait();
            continue;
        }
        fill(slots[published.load(std::memory_order_relaxed) % slotCount], place, disc);
        published.fetch_add(1, std::memory_order_release);
        dataBell.ring();
    }
}

void ReadAhead::Work::tellDrained()
{
    const std::uint32_t which = drainedGeneration.exchange(0, std::memory_order_acq_rel);
    if (which == 0)
        return;
    const std::lock_guard lock(callMutex);
    if (whenDrained)
        whenDrained(which);
}

std::uint64_t ReadAhead::Work::slotsInUse() const
{
    return published.load(std::memory_order_relaxed) - released.load(std::memory_order_acquire);
}

/// A long run costs a drive a tenth of a second, and who waits for it is the thread that keeps the windows alive. So a
/// consumer that has caught up gets short runs, unless the disc is so fast that it makes no difference.
int ReadAhead::Work::runFrom(const Place& place) const
{
    const int run = place.quick || slotsInUse() > 1 ? longRun : shortRun;
    return std::clamp(stretch.firstSector + stretch.sectorCount - place.sector, 0, run);
}

void ReadAhead::Work::fill(Slot& slot, Place& place, Disc& disc) const
{
    const auto wanted = static_cast<std::size_t>(runFrom(place));
    const auto before = std::chrono::steady_clock::now();
    Disc::Read read{0, Disc::ReadEnd::full};
    if (wanted > 0)
        read = disc.read(place.sector, std::span(slot.data.get(), wanted * Disc::sectorBytes));
    const std::size_t sectors = std::min(read.sectors, wanted);
    place.quick = std::chrono::steady_clock::now() - before < quickSector * wanted;
    place.sector += static_cast<int>(sectors);

    slot.generation = place.generation;
    slot.size = sectors * Disc::sectorBytes;
    slot.begin = std::min(place.skip, slot.size);
    slot.end = End::none;
    slot.badSector = -1;
    if (sectors < wanted) {
        // A disc that ends inside a track counts as unreadable there: the track's rest is missing all the same.
        slot.end = read.end == Disc::ReadEnd::gone ? End::gone : End::unreadable;
        slot.badSector = place.sector;
    } else if (place.sector >= stretch.firstSector + stretch.sectorCount) {
        slot.end = End::complete;
    }
    place.atEnd = slot.end != End::none;
    place.skip = 0;

    slot.checksumBefore = place.checksum;
    if (wantsChecksum)
        place.checksum = crc32(place.checksum, std::span(slot.data.get(), slot.size).subspan(slot.begin));
}

ReadAhead::ReadAhead(std::shared_ptr<Disc> disc, Stretch stretch, Wishes wishes, ThreadReaper& reaper)
    : work_(std::make_shared<Work>()),
      reaper_(reaper)
{
    work_->stretch = stretch;
    work_->wantsChecksum = wishes.checksum;
    work_->whenDrained = std::move(wishes.whenDrained);

    work_->reading = startInBackground([work = work_, disc = std::move(disc)]() mutable {
        work->run(*disc);
        // Closing a drive may take its time too, so the disc goes here and not with the last owner.
        disc.reset();
    });
}

ReadAhead::~ReadAhead()
{
    letGo();
}

void ReadAhead::letGo()
{
    work_->stop.store(true, std::memory_order_release);
    {
        const std::lock_guard lock(work_->callMutex);
        work_->whenDrained = nullptr;
    }
    work_->readerBell.ring();
    reaper_.take(std::move(work_->reading));
}

std::span<const std::byte> ReadAhead::ready()
{
    Work& work = *work_;
    for (;;) {
        if (work.holding) {
            const Slot& slot = work.front();
            if (slot.generation == work.generation.load(std::memory_order_relaxed)) {
                if (work.offset < slot.size)
                    return std::span<const std::byte>(slot.data.get(), slot.size).subspan(work.offset);
                if (slot.end != End::none)
                    return {};
            }
            work.holding = false;
            work.released.fetch_add(1, std::memory_order_release);
            work.readerBell.ring();
        }
        if (work.released.load(std::memory_order_relaxed) == work.published.load(std::memory_order_acquire))
            return {};
        work.holding = true;
        work.offset = work.front().begin;
    }
}

std::span<const std::byte> ReadAhead::await()
{
    for (;;) {
        const auto piece = ready();
        if (!piece.empty() || end() != End::none)
            return piece;
        work_->dataBell.wait();
    }
}

void ReadAhead::take(std::size_t bytes)
{
    work_->offset += bytes;
}

ReadAhead::End ReadAhead::end() const
{
    if (!work_->holding)
        return End::none;
    const Slot& slot = work_->front();
    const bool current = slot.generation == work_->generation.load(std::memory_order_relaxed);
    return current && work_->offset >= slot.size ? slot.end : End::none;
}

int ReadAhead::badSector() const
{
    return end() == End::none ? -1 : work_->front().badSector;
}

std::uint32_t ReadAhead::checksum() const
{
    if (!work_->holding)
        return 0;
    const Slot& slot = work_->front();
    return crc32(slot.checksumBefore, std::span(slot.data.get(), work_->offset).subspan(slot.begin));
}

void ReadAhead::seek(std::int64_t position)
{
    work_->target.store(position, std::memory_order_release);
    work_->generation.fetch_add(1, std::memory_order_release);
    // Drops what is stale, so that the reader finds room also when nobody consumes just now.
    ready();
    work_->readerBell.ring();
}

void ReadAhead::drained()
{
    work_->drainedGeneration.store(generation(), std::memory_order_release);
    work_->readerBell.ring();
}

std::uint32_t ReadAhead::generation() const
{
    return work_->generation.load(std::memory_order_relaxed);
}

}
