#pragma once

#include "host/drives/drive_set.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <vector>

/// Drives, a loop and a log that live in memory.
namespace tonquay::host::test {

using Bytes = std::vector<std::byte>;

/// What all readers of one made disc share. Sectors hold noise, so that no two places look alike.
struct DiscContents {
    std::vector<platform::DiscTrack> tracks;
    Bytes sound;
    std::atomic<int> badSector{-1};
    std::atomic<int> goneFrom{-1};
    std::atomic<int> readsUnderWay{0};
    std::atomic<int> sectorsRead{0};

    /// Lengths in sectors; a negative one is a data track.
    explicit DiscContents(const std::vector<int>& lengths)
    {
        int sector = 0;
        for (const int length : lengths) {
            const int count = std::abs(length);
            tracks.push_back({static_cast<int>(tracks.size()) + 1, sector, count, length > 0});
            sector += count;
        }
        std::mt19937 noise(7);
        sound.resize(static_cast<std::size_t>(sector) * Disc::sectorBytes);
        for (std::byte& byte : sound)
            byte = static_cast<std::byte>(noise() & 0xFFU);
    }

    Bytes track(std::size_t index) const
    {
        const auto from = static_cast<std::ptrdiff_t>(tracks[index].firstSector) * std::ptrdiff_t{Disc::sectorBytes};
        const auto size = static_cast<std::ptrdiff_t>(tracks[index].sectorCount) * std::ptrdiff_t{Disc::sectorBytes};
        return {sound.begin() + from, sound.begin() + from + size};
    }

    /// While held, reads do not return: a drive that tries a bad place again and again.
    void hold(bool held)
    {
        {
            const std::lock_guard lock(mutex_);
            held_ = held;
        }
        changed_.notify_all();
    }

    void passGate()
    {
        ++readsUnderWay;
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !held_; });
        --readsUnderWay;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool held_ = false;
};

class MemoryDisc : public Disc {
public:
    explicit MemoryDisc(std::shared_ptr<DiscContents> contents) : contents_(std::move(contents)) {}

    const std::vector<platform::DiscTrack>& tracks() const override { return contents_->tracks; }
    const platform::DiscNames& names() const override { return names_; }

    Read read(int firstSector, std::span<std::byte> buffer) override
    {
        contents_->passGate();
        const auto total = static_cast<int>(contents_->sound.size() / sectorBytes);
        int end = firstSector + static_cast<int>(buffer.size() / sectorBytes);
        ReadEnd why = ReadEnd::full;
        const auto stopAt = [&](int sector, ReadEnd reason) {
            if (sector >= 0 && sector < end) {
                end = std::max(sector, firstSector);
                why = reason;
            }
        };
        stopAt(total, ReadEnd::endOfDisc);
        stopAt(contents_->badSector, ReadEnd::unreadable);
        stopAt(contents_->goneFrom, ReadEnd::gone);
        const auto sectors = static_cast<std::size_t>(end - firstSector);
        std::memcpy(buffer.data(), contents_->sound.data() + static_cast<std::size_t>(firstSector) * sectorBytes,
                    sectors * sectorBytes);
        contents_->sectorsRead += static_cast<int>(sectors);
        return {sectors, why};
    }

private:
    std::shared_ptr<DiscContents> contents_;
    platform::DiscNames names_;
};

class MemoryDrive : public Drive {
public:
    std::shared_ptr<DiscContents> contents;
    platform::DiscNames discNames;
    platform::DriveDescription about;
    bool open = false;
    bool locked = false;

    const platform::DriveDescription& description() override { return about; }
    bool doorIsOpen() override { return open; }
    bool doorIsLocked() override { return locked; }
    std::vector<platform::DiscTrack> tracks() override
    {
        return contents && !open ? contents->tracks : std::vector<platform::DiscTrack>();
    }
    std::shared_ptr<Disc> openDisc() override
    {
        return contents && !open ? std::make_shared<MemoryDisc>(contents) : nullptr;
    }
    platform::DiscNames names() override { return discNames; }
    bool openDoor() override { return locked ? false : (open = true); }
    bool closeDoor() override { return !(open = false); }
    bool lockDoor() override { return locked = true; }
    bool unlockDoor() override { return !(locked = false); }
};

class MemoryDrives : public DriveSet {
public:
    std::deque<MemoryDrive> drives;

    std::size_t count() override { return drives.size(); }
    Drive& at(std::size_t index) override { return drives[index]; }
};

class TestLoop : public platform::EventLoop {
public:
    void pass() override { wait(std::chrono::milliseconds{0}); }

    void wait(std::chrono::milliseconds limit) override
    {
        std::unique_lock lock(mutex_);
        posted_.wait_for(lock, limit, [this] { return !calls_.empty(); });
        while (!calls_.empty()) {
            const auto call = std::move(calls_.front());
            calls_.pop_front();
            lock.unlock();
            call();
            lock.lock();
        }
    }

    void post(std::function<void()> call) override
    {
        {
            const std::lock_guard lock(mutex_);
            calls_.push_back(std::move(call));
        }
        posted_.notify_all();
    }

    std::unique_ptr<LoopTimer> every(std::chrono::milliseconds, std::function<void()> tick) override
    {
        auto timer = std::make_unique<Timer>();
        timer->tick = std::make_shared<std::function<void()>>(std::move(tick));
        timers_.push_back(timer->tick);
        return timer;
    }

    /// Time goes by for every timer that runs. True when there was one.
    bool tick()
    {
        std::erase_if(timers_, [](const auto& timer) { return timer.expired(); });
        for (const auto& timer : timers_)
            if (const auto due = timer.lock())
                (*due)();
        return !timers_.empty();
    }

    /// Sleeps until something is posted, and runs nothing of it.
    bool somethingIsPosted()
    {
        std::unique_lock lock(mutex_);
        return posted_.wait_for(lock, std::chrono::seconds{20}, [this] { return !calls_.empty(); });
    }

    /// Runs until `done`; false when that took longer than any of these tests may.
    bool until(const std::function<bool()>& done)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds{20};
        while (!done()) {
            if (std::chrono::steady_clock::now() > limit)
                return false;
            wait(std::chrono::milliseconds{2});
        }
        return true;
    }

private:
    struct Timer : LoopTimer {
        std::shared_ptr<std::function<void()>> tick;
    };

    std::mutex mutex_;
    std::condition_variable posted_;
    std::vector<std::weak_ptr<std::function<void()>>> timers_;
    std::deque<std::function<void()>> calls_;
};

class TestLog : public platform::Diagnostics {
public:
    void line(std::string_view area, std::string_view text) override
    {
        const std::lock_guard lock(mutex_);
        lines_ += std::string(area) + ": " + std::string(text) + "\n";
    }

    std::string lines()
    {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    std::mutex mutex_;
    std::string lines_;
};

}
