#pragma once

#include "config.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tonquay::simulated {

/// Why a drive refuses a command, in the drive's own numbers (key, code and qualifier of SPC).
struct Sense {
    std::uint8_t key = 0;
    std::uint8_t code = 0;
    std::uint8_t qualifier = 0;

    bool good() const { return key == 0; }
    bool operator==(const Sense&) const = default;
};

constexpr Sense noMedium{2, 0x3a, 0};
constexpr Sense becomingReady{2, 4, 1};
constexpr Sense unreadableSector{3, 0x11, 5};
constexpr Sense invalidField{5, 0x24, 0};
constexpr Sense outOfRange{5, 0x21, 0};
constexpr Sense wrongTrackMode{5, 0x64, 0};
constexpr Sense removalPrevented{5, 0x53, 2};

constexpr std::size_t senseBytes = 18;

/// The sense data of SPC in its fixed form, as far as there is room.
void describe(const Sense& sense, std::span<std::uint8_t> bytes);

/// One drive with its door, its disc and its faults. A real drive does one thing at a time: so does this one, and who
/// asks meanwhile waits.
class Drive {
public:
    explicit Drive(std::string configFile);

    const std::string& device() const { return device_; }

    /// What opening the node answers: 0 or an errno value.
    int openError();
    std::uint32_t group();
    void opened() { ++opens_; }
    void closed() { --opens_; }

    /// One packet command, as a drive gets it: fills `data` as far as the answer and its room go.
    Sense command(std::span<const std::uint8_t> packet, std::span<std::uint8_t> data);

    /// One Linux CD-ROM request: its answer, or -1 with errno.
    int control(unsigned long request, void* argument);

private:
    friend class Commands;
    friend class Requests;

    void reload();
    void log(const std::string& line) const;
    void keepState() const;

    bool mediumIn() const { return config_.medium && !torn_ && !doorOpen_; }
    Sense readiness() const;
    bool moveDoor(bool open);

    /// The track that a sector belongs to; none in the gap between sessions and outside the disc.
    const Config::Track* trackAt(int sector) const;
    Sense read(int first, int count, bool audioOnly, std::span<std::uint8_t> buffer);
    int missedBytes() const;

    /// Sector of a table entry, 0xAA being the lead-out; none without such a track.
    std::optional<int> startOf(int number) const;
    bool isData(int number) const;
    int lastNumber() const { return config_.firstNumber + static_cast<int>(config_.tracks.size()) - 1; }

    std::mutex mutex_;
    std::string configFile_;
    std::string stamp_; ///< tells one version of the file from the next
    std::string device_;
    Config config_;
    bool doorOpen_ = false;
    bool locked_ = false;
    bool kernelKeepsLock_ = false;
    bool torn_ = false; ///< the disc went away by itself
    bool changed_ = true;
    int reads_ = 0;
    std::atomic<int> opens_ = 0;
};

}
