#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tonquay::host {

/// Sound on its way from a sound callback to the thread that writes it down: six seconds of it. One thread puts in, one
/// takes out, and neither waits for the other.
class SoundRing {
public:
    /// What finds no room is lost, from its first byte on to its last. Neither waits nor allocates.
    void put(std::span<const std::byte> frames);

    /// The oldest bytes in one piece; they stay until they are dropped. Empty: there are none now.
    std::span<const std::byte> oldest() const;
    void drop(std::size_t bytes);

    std::uint64_t bytesLost() const { return lost_; }

private:
    static constexpr std::size_t size = 1 << 20;

    std::unique_ptr<std::array<std::byte, size>> bytes_ = std::make_unique<std::array<std::byte, size>>();
    std::atomic<std::uint64_t> in_{0};
    std::atomic<std::uint64_t> out_{0};
    std::atomic<std::uint64_t> lost_{0};
};

}
