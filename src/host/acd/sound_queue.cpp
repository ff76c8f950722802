#include "host/acd/sound_queue.h"

#include <utility>

namespace tonquay::host {

SoundQueue::Chunk SoundQueue::blank()
{
    {
        const std::lock_guard lock(mutex_);
        if (!blanks_.empty()) {
            Chunk chunk = std::move(blanks_.back());
            blanks_.pop_back();
            return chunk;
        }
    }
    return {.data = std::make_unique_for_overwrite<std::byte[]>(chunkBytes)};
}

bool SoundQueue::put(Chunk chunk)
{
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return closed_ || waiting_.size() < mostWaiting; });
        if (closed_)
            return false;
        waiting_.push_back(std::move(chunk));
    }
    changed_.notify_all();
    return true;
}

void SoundQueue::end()
{
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

std::optional<SoundQueue::Chunk> SoundQueue::take(std::chrono::milliseconds patience)
{
    std::optional<Chunk> chunk;
    {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, patience, [this] { return closed_ || ended_ || !waiting_.empty(); });
        if (closed_ || waiting_.empty())
            return std::nullopt;
        chunk = std::move(waiting_.front());
        waiting_.pop_front();
    }
    changed_.notify_all();
    return chunk;
}

bool SoundQueue::ended()
{
    const std::lock_guard lock(mutex_);
    return closed_ || (ended_ && waiting_.empty());
}

void SoundQueue::giveBack(Chunk chunk)
{
    chunk.size = 0;
    const std::lock_guard lock(mutex_);
    blanks_.push_back(std::move(chunk));
}

void SoundQueue::close()
{
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

}
