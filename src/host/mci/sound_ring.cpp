#include "host/mci/sound_ring.h"

#include <algorithm>

namespace tonquay::host {

void SoundRing::put(std::span<const std::byte> frames)
{
    const std::uint64_t in = in_.load(std::memory_order_relaxed);
    const std::uint64_t room = size - (in - out_.load(std::memory_order_acquire));
    if (frames.size() > room) {
        lost_ += frames.size();
        return;
    }
    const std::size_t place = in % size;
    const std::size_t first = std::min(frames.size(), size - place);
    std::ranges::copy(frames.first(first), bytes_->begin() + static_cast<std::ptrdiff_t>(place));
    std::ranges::copy(frames.subspan(first), bytes_->begin());
    in_.store(in + frames.size(), std::memory_order_release);
}

std::span<const std::byte> SoundRing::oldest() const
{
    const std::uint64_t out = out_.load(std::memory_order_relaxed);
    const std::uint64_t there = in_.load(std::memory_order_acquire) - out;
    const std::size_t place = out % size;
    return std::span(*bytes_).subspan(place, std::min<std::size_t>(there, size - place));
}

void SoundRing::drop(std::size_t bytes)
{
    out_.fetch_add(bytes, std::memory_order_release);
}

}
