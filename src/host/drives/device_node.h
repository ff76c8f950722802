#pragma once

#include "host/posix/descriptor.h"

#include <optional>
#include <string>
#include <utility>

namespace tonquay::host {

/// The node of an optical drive, for the requests of linux/cdrom.h that move its door and tell its state. Opened
/// without waiting for a disc and without locking the door, and held no longer than a request or two: the kernel
/// neither ejects nor unlocks a drive that somebody else has open.
class DeviceNode {
public:
    enum class Status { unknown, noDisc, trayOpen, notReady, discIn };

    struct Abilities {
        bool canOpen = false;
        bool canLock = false;
        bool readsAudio = false;
        bool readsMultiSession = false;
        bool readsDvd = false;
    };

    /// `error` is 0 when the node is open, else an errno value; ENOTBLK for a file that is no block device.
    static std::optional<DeviceNode> open(const std::string& path, int& error);

    Status status() const;

    /// True once after each change of disc; also when the drive cannot tell.
    bool mediaChanged() const;

    Abilities abilities() const;

    bool eject() const;
    bool closeTray() const;
    bool lock(bool locked) const;

private:
    explicit DeviceNode(Descriptor descriptor) : descriptor_(std::move(descriptor)) {}

    Descriptor descriptor_;
};

/// True only when the drive itself says that no disc is in, or the drive is no longer there.
bool saysNoMedium(const std::string& path);

}
