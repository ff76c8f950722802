#pragma once

#include "host/audio/fake_drives.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <set>
#include <thread>

namespace tonquay::host::test {

/// What ails a drive; its readers share it, and tests change it while they read.
struct Faults {
    std::atomic<int> jitterEvery{0};   ///< one of so many reads is off by up to `jitterSamples`; 0: none
    std::atomic<int> jitterSamples{0}; ///< stereo samples, to either side
    std::atomic<int> dropEvery{0};     ///< one of so many reads loses `dropSamples` in its middle
    std::atomic<int> dropSamples{0};
    std::atomic<int> slowMs{0}; ///< more for each read
    std::set<int> bad;          ///< sectors that never give data
    std::map<int, int> flaky;   ///< sectors that give none so many times yet; counted under the mutex
    std::mutex counting;
    std::atomic<int> reads{0};
};

/// A disc in memory, read by a drive with faults.
class FaultyDisc : public Disc {
public:
    FaultyDisc(std::shared_ptr<DiscContents> contents, std::shared_ptr<Faults> faults)
        : contents_(std::move(contents)),
          faults_(std::move(faults)),
          disc_(contents_)
    {}

    const std::vector<platform::DiscTrack>& tracks() const override { return disc_.tracks(); }
    const platform::DiscNames& names() const override { return disc_.names(); }

    Read read(int firstSector, std::span<std::byte> buffer) override
    {
        const int number = ++faults_->reads;
        if (faults_->slowMs > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(faults_->slowMs));
        const auto asked = static_cast<int>(buffer.size() / sectorBytes);
        int good = 0;
        while (good < asked && givesData(firstSector + good))
            ++good;
        Read read = disc_.read(firstSector, buffer.first(static_cast<std::size_t>(good) * sectorBytes));
        if (read.end == ReadEnd::full && good < asked)
            read.end = ReadEnd::unreadable;
        const auto sound = buffer.first(read.sectors * sectorBytes);
        if (isDue(faults_->jitterEvery, number))
            shift(firstSector, sound, (number * 37) % (2 * faults_->jitterSamples + 1) - faults_->jitterSamples);
        if (isDue(faults_->dropEvery, number))
            drop(firstSector, sound, (number * 53) % faults_->dropSamples + 1);
        return read;
    }

private:
    /// Scattered: a drive keeps no time with its reader.
    static bool isDue(int every, int number)
    {
        const std::uint32_t scattered = static_cast<std::uint32_t>(number) * 2654435761U >> 16;
        return every > 0 && scattered % static_cast<std::uint32_t>(every) == 0;
    }

    bool givesData(int sector)
    {
        if (faults_->bad.contains(sector))
            return false;
        const std::lock_guard lock(faults_->counting);
        const auto flaky = faults_->flaky.find(sector);
        return flaky == faults_->flaky.end() || flaky->second-- <= 0;
    }

    std::byte at(std::ptrdiff_t byte) const
    {
        return byte >= 0 && byte < std::ssize(contents_->sound) ? contents_->sound[static_cast<std::size_t>(byte)]
                                                                : std::byte{0};
    }

    /// The sound of another place, as from a drive that has not found the sector.
    void shift(int firstSector, std::span<std::byte> sound, int samples) const
    {
        const std::ptrdiff_t begin = std::ptrdiff_t{firstSector} * std::ptrdiff_t{sectorBytes} + samples * 4;
        for (std::size_t i = 0; i < sound.size(); ++i)
            sound[i] = at(begin + static_cast<std::ptrdiff_t>(i));
    }

    /// Samples in the middle are missing, and later ones take their place.
    void drop(int firstSector, std::span<std::byte> sound, int samples) const
    {
        const std::ptrdiff_t begin = std::ptrdiff_t{firstSector} * std::ptrdiff_t{sectorBytes} + samples * 4;
        for (std::size_t i = sound.size() / 8 * 4; i < sound.size(); ++i)
            sound[i] = at(begin + static_cast<std::ptrdiff_t>(i));
    }

    std::shared_ptr<DiscContents> contents_;
    std::shared_ptr<Faults> faults_;
    MemoryDisc disc_;
};

/// A drive with a faulty disc in it.
class FaultyDrive : public MemoryDrive {
public:
    std::shared_ptr<Faults> faults = std::make_shared<Faults>();

    std::shared_ptr<Disc> openDisc() override
    {
        return contents && !open ? std::make_shared<FaultyDisc>(contents, faults) : nullptr;
    }
};

}
