#include "drive.h"

#include "next.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace tonquay::simulated {
namespace {

constexpr int sectorBytes = 2352;
// What lies between the last sector of a first session and the first one of the next: lead-out, lead-in, pregap.
constexpr int sessionGap = 6750 + 4500 + 150;

std::string stampOf(const std::string& file)
{
    struct stat status {};
    if (nextStat(file.c_str(), &status) != 0)
        return "missing";
    return std::to_string(status.st_mtim.tv_sec) + '.' + std::to_string(status.st_mtim.tv_nsec) + '/' +
           std::to_string(status.st_ino) + '/' + std::to_string(status.st_size);
}

}

Drive::Drive(std::string configFile) : configFile_(std::move(configFile))
{
    reload();
    device_ = config_.device;
}

/// The file is a script that a test turns page by page: a new page starts the counting of reads anew, and moves the
/// door and the disc where it says otherwise than the page before.
void Drive::reload()
{
    const std::string stamp = stampOf(configFile_);
    if (stamp == stamp_)
        return;
    const bool first = stamp_.empty();
    stamp_ = stamp;
    const Config before = std::exchange(config_, readConfig(configFile_));
    reads_ = 0;
    torn_ = false;
    if (first || before.doorOpen != config_.doorOpen)
        doorOpen_ = config_.doorOpen;
    if (first || before.medium != config_.medium || before.image != config_.image)
        changed_ = true;
    log("page turned");
}

void Drive::log(const std::string& line) const
{
    if (!config_.log.empty())
        std::ofstream(config_.log, std::ios::app) << line << '\n';
}

void Drive::keepState() const
{
    std::ofstream(configFile_ + ".state")
        << "door " << (doorOpen_ ? "open" : "closed") << "\nlock " << (locked_ ? "on" : "off") << '\n';
}

int Drive::openError()
{
    const std::lock_guard guard(mutex_);
    reload();
    switch (config_.fault) {
    case Config::Fault::missing: return ENOENT;
    case Config::Fault::denied: return EACCES;
    case Config::Fault::busy: return EBUSY;
    case Config::Fault::none: break;
    }
    return 0;
}

std::uint32_t Drive::group()
{
    const std::lock_guard guard(mutex_);
    return config_.group;
}

Sense Drive::readiness() const
{
    if (!mediumIn())
        return noMedium;
    return config_.ready ? Sense{} : becomingReady;
}

bool Drive::moveDoor(bool open)
{
    if (open && locked_)
        return false;
    if (open != doorOpen_)
        changed_ = true;
    doorOpen_ = open;
    keepState();
    return true;
}

const Config::Track* Drive::trackAt(int sector) const
{
    if (sector < 0 || sector >= config_.leadOut)
        return nullptr;
    if (config_.lastSession > 0 && sector < config_.lastSession && sector >= config_.lastSession - sessionGap)
        return nullptr;
    const auto after = std::find_if(config_.tracks.begin(), config_.tracks.end(),
                                    [sector](const Config::Track& track) { return track.firstSector > sector; });
    return after == config_.tracks.begin() ? nullptr : &*std::prev(after);
}

Sense Drive::read(int first, int count, bool audioOnly, std::span<std::uint8_t> buffer)
{
    ++reads_;
    if (config_.slowRead > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(config_.slowRead));
    if (config_.removeAfter >= 0 && reads_ > config_.removeAfter)
        torn_ = true;
    if (const Sense sense = readiness(); !sense.good())
        return sense;

    const std::size_t bytes = static_cast<std::size_t>(count) * sectorBytes;
    if (count < 0 || bytes > buffer.size())
        return invalidField;
    for (int sector = first; sector < first + count; ++sector) {
        const Config::Track* track = trackAt(sector);
        if (!track)
            return outOfRange;
        if (audioOnly && !track->audio)
            return wrongTrackMode;
        if (std::find(config_.bad.begin(), config_.bad.end(), sector) != config_.bad.end())
            return unreadableSector;
    }
    std::ifstream image(config_.image, std::ios::binary);
    const std::streamoff begin = static_cast<std::streamoff>(first) * sectorBytes + missedBytes();
    std::vector<char> sound(bytes);
    image.seekg(std::max<std::streamoff>(begin, 0));
    if (!image.read(sound.data(), static_cast<std::streamsize>(bytes)) && config_.jitterEvery == 0)
        return unreadableSector;
    std::transform(sound.begin(), sound.end(), buffer.begin(), [](char c) { return static_cast<std::uint8_t>(c); });
    return {};
}

/// How far a read is off its place.
int Drive::missedBytes() const
{
    constexpr int frameBytes = 4;
    constexpr std::uint32_t scatter = 2654435761U;
    const std::uint32_t chance = static_cast<std::uint32_t>(reads_) * scatter >> 16;
    if (config_.jitterEvery == 0 || chance % static_cast<std::uint32_t>(config_.jitterEvery) != 0)
        return 0;
    return (reads_ * 37 % (2 * config_.jitterSamples + 1) - config_.jitterSamples) * frameBytes;
}

std::optional<int> Drive::startOf(int number) const
{
    if (number == 0xaa)
        return config_.leadOut;
    if (number < config_.firstNumber || number > lastNumber())
        return std::nullopt;
    return config_.tracks[static_cast<std::size_t>(number - config_.firstNumber)].firstSector;
}

bool Drive::isData(int number) const
{
    return number >= config_.firstNumber && number <= lastNumber() &&
           !config_.tracks[static_cast<std::size_t>(number - config_.firstNumber)].audio;
}

}
