#pragma once

#include "host/discs/disc.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace tonquay::host {

class ThreadReaper;

/// Reads a stretch of a disc ahead of whoever consumes it, on a thread of its own, into a ring of 1.4 MB.
///
/// There is one consumer: a thread that waits for data with await(), or a sound callback that takes what is ready().
/// The consumer may be handed from one thread to another with a lock between them. Nothing on the consumer's side
/// waits for a read but await(), and nothing but the constructor allocates.
///
/// Bytes come in order and unchanged. Where a sector cannot be read, all before it are delivered first, and then
/// end() tells why there are no more. It is not tried again: the disc has done that as often as it helps.
class ReadAhead {
public:
    struct Stretch {
        int firstSector = 0;
        int sectorCount = 0;
    };

    enum class End { none, complete, unreadable, gone };

    /// Told by drained(): which seek() the consumption belonged to.
    using DrainedCall = std::function<void(std::uint32_t generation)>;

    struct Wishes {
        bool checksum = false;
        /// Called on the reading thread after drained(), never once the ReadAhead is being destroyed.
        DrainedCall whenDrained = {};
    };

    /// The thread starts to read at once. Throws std::system_error when the system has no thread to give.
    ReadAhead(std::shared_ptr<Disc> disc, Stretch stretch, Wishes wishes, ThreadReaper& reaper);

    /// Does not wait for a read under way: the reaper gets the thread. The disc is let go when that read returns.
    ~ReadAhead();

    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    /// The next bytes in one piece, as far as they are there; whole frames. Empty: none yet, or the end.
    /// A piece stays valid, also when it was taken, until the next call of ready(), await() or seek().
    std::span<const std::byte> ready();

    /// Like ready(), but sleeps until there is something. Empty at the end only.
    std::span<const std::byte> await();

    /// Consumes bytes of the piece that ready() or await() gave.
    void take(std::size_t bytes);

    /// Why there is no more. None while there is more or nobody knows yet.
    [[nodiscard]] End end() const;

    /// The first sector that gave no data, where end() says so; else -1.
    [[nodiscard]] int badSector() const;

    /// CRC-32 of all bytes taken so far (since the last seek). Only with Wishes::checksum.
    [[nodiscard]] std::uint32_t checksum() const;

    /// Goes on at another byte of the stretch (a whole frame, not past its end). What was read for the old place is
    /// dropped. Returns at once; the reader follows when its read under way is done. Belongs to the consumer.
    void seek(std::int64_t position);

    /// The consumer's word that the last byte has come to its destination. Never waits.
    void drained();

    [[nodiscard]] std::uint32_t generation() const; ///< counts the calls of seek()

private:
    struct Work;

    void letGo();

    std::shared_ptr<Work> work_;
    ThreadReaper& reaper_;
};

}
