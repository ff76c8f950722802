#pragma once

#include "host/drives/drive_set.h"
#include "host/drives/medium.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tonquay::host {

/// What a watch saw of its drive, whole and at one moment.
struct Seen {
    platform::DriveDescription description;
    bool doorOpen = false;
    bool locked = false;
    std::vector<platform::DiscTrack> tracks; ///< of an audio disc only
    platform::DiscNames names;
    std::shared_ptr<Medium> medium; ///< the disc that is in, of data only included

    /// Notes why there is no audio disc and ends the medium for whoever reads it.
    void noDisc(platform::DriveProblem problem, std::string text);
    void noDisc(platform::DriveProblem problem);

    /// Notes a disc. The same one seen again goes on as the same medium; one without audio is a problem of its own.
    void discIsIn(std::vector<platform::DiscTrack> discTracks, platform::DiscNames discNames);
};

/// A drive that answers every question from what was last seen of it. One thread looks and publishes, the logic's asks.
class SeenDrive : public Drive {
public:
    const platform::DriveDescription& description() final;
    bool doorIsOpen() final;
    bool doorIsLocked() final;
    std::vector<platform::DiscTrack> tracks() final;
    platform::DiscNames names() final;

    /// Waits until the first look has ended and found the drive settled, or until the deadline.
    void awaitFirstLook(std::chrono::steady_clock::time_point deadline);

    /// Unlocks the door if this program has locked it; does not wait for a look under way longer than a moment.
    virtual void releaseDoor() = 0;

protected:
    explicit SeenDrive(Seen first) : seen_(std::move(first)) {}

    Seen seen() const;
    void publish(Seen seen);
    void settled(); ///< what was published may be believed

private:
    mutable std::mutex mutex_;
    std::condition_variable settledNow_;
    bool settled_ = false;
    Seen seen_;
    platform::DriveDescription description_;
};

}
