#include "host/drives/real_drive.h"

#include "host/drives/cdio_disc.h"
#include "host/drives/cdio_drive.h"
#include "host/drives/problem_text.h"
#include "host/drives/watched_disc.h"

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

namespace tonquay::host {
namespace {

using platform::DriveProblem;
using namespace std::chrono_literals;

constexpr auto eagerInterval = 200ms;

// A table that could not be read is tried again, but not at every look: each try is loud.
constexpr int looksBetweenTries = 5;

Seen unseen(const std::string& node, wchar_t letter)
{
    Seen seen;
    seen.description.letter = letter;
    seen.description.hostPath = node;
    seen.noDisc(DriveProblem::busy, gettingReadyText(node));
    return seen;
}

bool hasReaders(const Seen& seen)
{
    return seen.medium && seen.medium->hasReaders();
}

}

RealDrive::RealDrive(std::string node, wchar_t letter, std::chrono::milliseconds interval)
    : SeenDrive(unseen(node, letter)),
      node_(std::move(node)),
      interval_(interval),
      watch_([this] { return look(); })
{
    watch_.start();
}

RealDrive::~RealDrive()
{
    watch_.stop();
}

std::shared_ptr<Disc> RealDrive::openDisc()
{
    const Seen now = seen();
    if (!now.description.disc)
        return nullptr;
    return std::make_shared<WatchedDisc>(std::make_unique<CdioDisc>(node_, now.tracks, now.names), now.medium);
}

std::chrono::milliseconds RealDrive::look()
{
    const std::lock_guard talking(device_);
    Seen now = seen();
    const Pace pace = lookAt(now);
    publish(std::move(now));
    if (pace == Pace::eager)
        return std::min(interval_, std::chrono::milliseconds(eagerInterval));
    settled();
    return interval_;
}

RealDrive::Pace RealDrive::lookAt(Seen& seen)
{
    int error = 0;
    const auto node = DeviceNode::open(node_, error);
    if (!node)
        return lookAtClosedNode(seen, error);
    if (!learned_)
        learn(seen, *node);
    if (!hasReaders(seen))
        lookAtLock(seen, *node);

    const DeviceNode::Status status = node->status();
    seen.doorOpen = status == DeviceNode::Status::trayOpen;
    switch (status) {
    case DeviceNode::Status::trayOpen: seen.noDisc(DriveProblem::trayOpen); return Pace::restful;
    case DeviceNode::Status::noDisc: seen.noDisc(DriveProblem::noDisc); return Pace::restful;
    case DeviceNode::Status::notReady:
        // A disc that is known may be waking up from its rest.
        if (seen.medium)
            return Pace::restful;
        seen.noDisc(DriveProblem::busy, gettingReadyText(node_));
        return Pace::eager;
    case DeviceNode::Status::unknown:
    case DeviceNode::Status::discIn: return lookAtDisc(seen, *node);
    }
    return Pace::restful;
}

RealDrive::Pace RealDrive::lookAtClosedNode(Seen& seen, int error)
{
    const bool refused = error == EACCES || error == EPERM;
    if (error == ENOMEDIUM) {
        seen.noDisc(DriveProblem::noDisc);
    } else if (refused || error == EBUSY) {
        if (!hasReaders(seen))
            seen.noDisc(refused ? DriveProblem::noPermission : DriveProblem::busy);
    } else {
        // Pulled out, perhaps to be another drive when it is back.
        learned_ = false;
        seen.doorOpen = false;
        seen.locked = false;
        seen.noDisc(DriveProblem::noDevice);
    }
    return Pace::restful;
}

RealDrive::Pace RealDrive::lookAtDisc(Seen& seen, const DeviceNode& node)
{
    // A disc under a reader goes only by an explicit answer, and asking whether it changed uses the answer up.
    if (hasReaders(seen))
        return Pace::restful;
    const bool changed = node.mediaChanged();
    if (seen.medium && !changed)
        return Pace::restful;
    const bool failedBefore = seen.description.problem == DriveProblem::unreadable;
    if (failedBefore && !changed && ++looksSinceUnreadable_ < looksBetweenTries)
        return Pace::restful;
    looksSinceUnreadable_ = 0;
    readDisc(seen);
    return Pace::restful;
}

void RealDrive::readDisc(Seen& seen) const
{
    const auto drive = CdioDrive::open(node_);
    const auto table = drive ? drive->table() : std::nullopt;
    auto tracks = table ? tracksOf(*table) : std::nullopt;
    if (!tracks) {
        seen.noDisc(DriveProblem::unreadable);
        return;
    }
    platform::DiscNames names = hasAudio(*tracks) ? drive->names(*tracks) : platform::DiscNames{};
    seen.discIsIn(std::move(*tracks), std::move(names));
}

/// What the drive is and can do: from its page of capabilities, else from what the kernel knows of it.
void RealDrive::learn(Seen& seen, const DeviceNode& node)
{
    platform::DriveDescription& description = seen.description;
    const auto kernel = node.abilities();
    description.canOpen = kernel.canOpen;
    description.canLock = kernel.canLock;
    description.abilities = (kernel.readsAudio ? ability::readsAudio : 0) |
                            (kernel.readsMultiSession ? ability::readsMultiSession : 0) |
                            (kernel.readsDvd ? ability::readsDvdRom : 0);
    description.maxSpeedKbps = 0;
    description.cacheKb = 0;
    const auto drive = CdioDrive::open(node_);
    if (!drive)
        return;
    if (const auto hardware = drive->hardware()) {
        description.vendor = hardware->vendor;
        description.product = hardware->product;
        description.revision = hardware->revision;
    }
    const auto page = drive->capabilities();
    tellsAbilities_ = page.has_value();
    if (page) {
        description.abilities = page->abilities;
        description.canOpen = description.canOpen && page->canOpen;
        description.canLock = description.canLock && page->canLock;
        description.maxSpeedKbps = page->maxReadSpeed;
        description.cacheKb = page->bufferKb;
    }
    learned_ = true;
}

void RealDrive::lookAtLock(Seen& seen, const DeviceNode& node)
{
    if (kernelStillLocks_ && node.lock(false))
        kernelStillLocks_ = false;
    seen.locked = lockedByUs_;
    if (!tellsAbilities_)
        return;
    const auto drive = CdioDrive::open(node_);
    const auto page = drive ? drive->capabilities() : std::nullopt;
    seen.locked = lockedByUs_ || (page && page->locked);
}

bool RealDrive::openDoor()
{
    const std::lock_guard talking(device_);
    Seen now = seen();
    if (!now.description.canOpen || now.locked)
        return false;
    if (now.doorOpen)
        return true;
    int error = 0;
    bool opened = false;
    if (const auto node = DeviceNode::open(node_, error))
        opened = node->eject();
    // The kernel opens no door of a drive that a second one holds; the reader of this disc is such a second one.
    if (!opened)
        if (const auto drive = CdioDrive::open(node_, CdioDrive::Access::commanding))
            opened = drive->ejectDisc();
    if (!opened)
        return false;
    now.doorOpen = true;
    now.noDisc(DriveProblem::trayOpen);
    publish(std::move(now));
    return true;
}

bool RealDrive::closeDoor()
{
    const std::lock_guard talking(device_);
    Seen now = seen();
    if (!now.doorOpen)
        return now.description.canOpen;
    int error = 0;
    const auto node = DeviceNode::open(node_, error);
    if (!node || !node->closeTray())
        return false;
    now.doorOpen = false;
    now.noDisc(DriveProblem::busy, gettingReadyText(node_));
    publish(std::move(now));
    watch_.lookSoon();
    return true;
}

bool RealDrive::lockDoor()
{
    const std::lock_guard talking(device_);
    Seen now = seen();
    int error = 0;
    const auto node = now.description.canLock ? DeviceNode::open(node_, error) : std::nullopt;
    if (!node || !node->lock(true))
        return false;
    lockedByUs_ = true;
    kernelStillLocks_ = false;
    now.locked = true;
    publish(std::move(now));
    return true;
}

bool RealDrive::unlockDoor()
{
    const std::lock_guard talking(device_);
    Seen now = seen();
    if (!now.description.canLock)
        return false;
    if (now.locked && !unlock())
        return false;
    now.locked = false;
    publish(std::move(now));
    return true;
}

bool RealDrive::unlock()
{
    int error = 0;
    bool unlocked = false;
    if (const auto node = DeviceNode::open(node_, error))
        unlocked = node->lock(false);
    // Held open by a reader, the kernel refuses. A lock of our own may be taken off past it; one of somebody else's,
    // of a mounted disc for example, may not.
    if (!unlocked && lockedByUs_)
        if (const auto drive = CdioDrive::open(node_, CdioDrive::Access::commanding)) {
            unlocked = drive->allowRemoval();
            kernelStillLocks_ = unlocked;
        }
    if (unlocked)
        lockedByUs_ = false;
    return unlocked;
}

void RealDrive::releaseDoor()
{
    constexpr auto patience = 500ms;
    constexpr auto step = 10ms;
    std::unique_lock talking(device_, std::try_to_lock);
    for (auto waited = 0ms; !talking && waited < patience; waited += step) {
        std::this_thread::sleep_for(step);
        static_cast<void>(talking.try_lock());
    }
    // A drive that hangs would not hear it either.
    if (talking && lockedByUs_)
        unlock();
}

}
