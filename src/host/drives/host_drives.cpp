#include "host/drives/host_drives.h"

#include "host/drives/real_drive.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace tonquay::host {
namespace {

constexpr std::size_t letterCount = L'Z' - L'D' + 1;
constexpr int machineDriveCount = 32;

std::optional<dev_t> deviceNumber(const std::string& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISBLK(status.st_mode))
        return std::nullopt;
    return status.st_rdev;
}

/// A drive may be named by a link (/dev/cdrom), and is one drive still.
bool isAmong(const std::string& path, const std::vector<std::string>& devices)
{
    const auto number = deviceNumber(path);
    return std::any_of(devices.begin(), devices.end(), [&](const std::string& device) {
        return device == path || (number && deviceNumber(device) == number);
    });
}

std::vector<std::string> devicesOf(const DriveSources& sources)
{
    std::vector<std::string> devices;
    for (const std::string& device : sources.devices)
        if (!isAmong(device, devices))
            devices.push_back(device);
    for (int number = 0; sources.machine && number < machineDriveCount; ++number) {
        const std::string path = "/dev/sr" + std::to_string(number);
        if (deviceNumber(path) && !isAmong(path, devices))
            devices.push_back(path);
    }
    return devices;
}

}

void HostDriveSet::unlockAll()
{
    for (const auto& drive : drives_)
        drive->releaseDoor();
}

std::unique_ptr<HostDriveSet> driveSet(const DriveSources& sources)
{
    std::vector<std::unique_ptr<SeenDrive>> drives;
    for (const std::filesystem::path& image : sources.images)
        if (drives.size() < letterCount)
            drives.push_back(
                std::make_unique<ImageDrive>(image, driveLetter(drives.size()), sources.opener, sources.interval));
    for (const std::string& device : devicesOf(sources))
        if (drives.size() < letterCount)
            drives.push_back(std::make_unique<RealDrive>(device, driveLetter(drives.size()), sources.interval));

    const auto deadline = std::chrono::steady_clock::now() + sources.patience;
    for (const auto& drive : drives)
        drive->awaitFirstLook(deadline);
    return std::make_unique<HostDriveSet>(std::move(drives));
}

}
