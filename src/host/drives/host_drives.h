#pragma once

#include "host/drives/drive_set.h"
#include "host/drives/image_drive.h"
#include "host/drives/seen_drive.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tonquay::host {

/// Which drives a set is made of, in the order of their letters.
struct DriveSources {
    std::vector<std::filesystem::path> images = {};
    std::vector<std::string> devices = {}; ///< named by the user; one that is not there is a drive with that problem
    bool machine = true; ///< then /dev/sr0 and on, as far as they are there and were not named already
    std::chrono::milliseconds interval{1000}; ///< between two looks of a watch
    std::chrono::milliseconds patience{5000}; ///< how long driveSet() waits for drives that spin up
    ImageOpener opener = openImage;
};

/// The drives of this program, with their watches.
class HostDriveSet final : public DriveSet {
public:
    explicit HostDriveSet(std::vector<std::unique_ptr<SeenDrive>> drives) : drives_(std::move(drives)) {}

    std::size_t count() override { return drives_.size(); }
    Drive& at(std::size_t index) override { return *drives_[index]; }

    /// Unlocks the doors that were locked by this program and no others; for its end. Takes half a second at most for
    /// each drive that hangs, and next to nothing otherwise.
    void unlockAll();

private:
    std::vector<std::unique_ptr<SeenDrive>> drives_;
};

/// Makes the drives, letters D to Z; what comes after Z is left out. Returns when each drive has been looked at once
/// and is ready, or when the patience is used up: a slow one is then told as busy until its watch knows better.
std::unique_ptr<HostDriveSet> driveSet(const DriveSources& sources);

}
