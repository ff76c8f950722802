#pragma once

#include "host/drives/device_node.h"
#include "host/drives/seen_drive.h"
#include "host/drives/watch.h"

#include <mutex>
#include <string>

namespace tonquay::host {

/// An optical drive of this machine, by its node. The node need not be there yet: a drive that is plugged in later is
/// found by the watch.
///
/// A door command goes to the drive itself and waits for it, and for a look under way; what it changed can be asked for
/// at once. Readers do not stand in its way: an opened door ends their disc.
class RealDrive final : public SeenDrive {
public:
    RealDrive(std::string node, wchar_t letter, std::chrono::milliseconds interval);
    ~RealDrive() override;

    std::shared_ptr<Disc> openDisc() override;
    bool openDoor() override;
    bool closeDoor() override;
    bool lockDoor() override;
    bool unlockDoor() override;
    void releaseDoor() override;

private:
    enum class Pace { restful, eager };

    std::chrono::milliseconds look();
    Pace lookAt(Seen& seen);
    Pace lookAtClosedNode(Seen& seen, int error);
    Pace lookAtDisc(Seen& seen, const DeviceNode& node);
    void learn(Seen& seen, const DeviceNode& node);
    void readDisc(Seen& seen) const;
    void lookAtLock(Seen& seen, const DeviceNode& node);
    bool unlock();

    const std::string node_;
    const std::chrono::milliseconds interval_;
    // Held by whoever talks to the drive; the fields below belong to its holder.
    std::mutex device_;
    bool learned_ = false;
    bool tellsAbilities_ = false;
    bool lockedByUs_ = false;
    bool kernelStillLocks_ = false; ///< unlocked past the kernel, which is to be told when nobody reads
    int looksSinceUnreadable_ = 0;
    Watch watch_;
};

}
