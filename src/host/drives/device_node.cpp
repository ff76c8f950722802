#include "host/drives/device_node.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tonquay::host {

std::optional<DeviceNode> DeviceNode::open(const std::string& path, int& error)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        error = errno;
        return std::nullopt;
    }
    // Opening a pipe or a terminal by mistake could hang or disturb it.
    if (!S_ISBLK(status.st_mode)) {
        error = ENOTBLK;
        return std::nullopt;
    }
    Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    error = descriptor ? 0 : errno;
    if (!descriptor)
        return std::nullopt;
    return DeviceNode(std::move(descriptor));
}

DeviceNode::Status DeviceNode::status() const
{
    const int answer = ::ioctl(descriptor_.get(), CDROM_DRIVE_STATUS, CDSL_CURRENT);
    switch (answer) {
    case CDS_NO_DISC: return Status::noDisc;
    case CDS_TRAY_OPEN: return Status::trayOpen;
    case CDS_DRIVE_NOT_READY: return Status::notReady;
    case CDS_DISC_OK: return Status::discIn;
    default: return answer < 0 && errno == ENOMEDIUM ? Status::noDisc : Status::unknown;
    }
}

bool DeviceNode::mediaChanged() const
{
    return ::ioctl(descriptor_.get(), CDROM_MEDIA_CHANGED, CDSL_CURRENT) != 0;
}

DeviceNode::Abilities DeviceNode::abilities() const
{
    const int answer = ::ioctl(descriptor_.get(), CDROM_GET_CAPABILITY, 0);
    if (answer < 0)
        return {};
    return {(answer & CDC_OPEN_TRAY) != 0, (answer & CDC_LOCK) != 0, (answer & CDC_PLAY_AUDIO) != 0,
            (answer & CDC_MULTI_SESSION) != 0, (answer & CDC_DVD) != 0};
}

bool DeviceNode::eject() const
{
    return ::ioctl(descriptor_.get(), CDROMEJECT, 0) == 0;
}

bool DeviceNode::closeTray() const
{
    return ::ioctl(descriptor_.get(), CDROMCLOSETRAY, 0) == 0;
}

bool DeviceNode::lock(bool locked) const
{
    return ::ioctl(descriptor_.get(), CDROM_LOCKDOOR, locked ? 1 : 0) == 0;
}

bool saysNoMedium(const std::string& path)
{
    int error = 0;
    const auto node = DeviceNode::open(path, error);
    if (!node)
        return error == ENOMEDIUM || error == ENOENT || error == ENXIO || error == ENODEV;
    const DeviceNode::Status status = node->status();
    return status == DeviceNode::Status::noDisc || status == DeviceNode::Status::trayOpen;
}

}
