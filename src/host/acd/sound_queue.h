#pragma once

#include "base/red_book.h"
#include "host/discs/disc.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace tonquay::host {

/// Sound on its way from the thread that reads a disc to the one that writes the file, in chunks of a second at most. A
/// reader that is far ahead waits.
class SoundQueue {
public:
    static constexpr std::size_t chunkBytes = base::red_book::bytesPerSecond;

    struct Chunk {
        std::unique_ptr<std::byte[]> data;
        std::size_t size = 0; ///< bytes that are filled

        [[nodiscard]] std::span<std::byte> room() const { return {data.get(), chunkBytes}; }
        [[nodiscard]] std::span<const std::byte> sound() const { return {data.get(), size}; }
    };

    /// An empty chunk to fill.
    Chunk blank();

    /// The reader's: false when nobody wants it any more.
    bool put(Chunk chunk);
    void end(); ///< the reader's word that no more comes

    /// The writer's: the next chunk; none when nothing came within `patience`, and after the last one.
    std::optional<Chunk> take(std::chrono::milliseconds patience);
    bool ended(); ///< the last chunk was taken
    void giveBack(Chunk chunk);

    /// Has put() refuse, and take() say that it was the last; for whoever breaks it off.
    void close();

private:
    static constexpr std::size_t mostWaiting = 8;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Chunk> waiting_;
    std::vector<Chunk> blanks_;
    bool ended_ = false;
    bool closed_ = false;
};

}
