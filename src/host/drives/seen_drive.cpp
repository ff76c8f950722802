#include "host/drives/seen_drive.h"

#include "host/drives/drive_table.h"
#include "host/drives/problem_text.h"

#include <algorithm>
#include <utility>

namespace tonquay::host {
namespace {

bool sameTracks(const std::vector<platform::DiscTrack>& left, const std::vector<platform::DiscTrack>& right)
{
    const auto same = [](const platform::DiscTrack& a, const platform::DiscTrack& b) {
        return a.number == b.number && a.firstSector == b.firstSector && a.sectorCount == b.sectorCount &&
               a.audio == b.audio;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), same);
}

}

void Seen::noDisc(platform::DriveProblem problem, std::string text)
{
    if (medium)
        medium->takeOut();
    medium.reset();
    tracks.clear();
    names = {};
    description.disc = false;
    description.problem = problem;
    description.problemText = std::move(text);
}

void Seen::noDisc(platform::DriveProblem problem)
{
    noDisc(problem, problemText(problem, description.hostPath));
}

void Seen::discIsIn(std::vector<platform::DiscTrack> discTracks, platform::DiscNames discNames)
{
    using platform::DriveProblem;
    const bool audio = hasAudio(discTracks);
    if (!medium || !audio || !sameTracks(tracks, discTracks)) {
        noDisc(DriveProblem::none);
        medium = std::make_shared<Medium>();
    }
    description.disc = audio;
    description.problem = audio ? DriveProblem::none : DriveProblem::dataDisc;
    description.problemText = problemText(description.problem, description.hostPath);
    if (audio) {
        tracks = std::move(discTracks);
        names = std::move(discNames);
    }
}

const platform::DriveDescription& SeenDrive::description()
{
    const std::lock_guard guard(mutex_);
    description_ = seen_.description;
    return description_;
}

bool SeenDrive::doorIsOpen()
{
    const std::lock_guard guard(mutex_);
    return seen_.doorOpen;
}

bool SeenDrive::doorIsLocked()
{
    const std::lock_guard guard(mutex_);
    return seen_.locked;
}

std::vector<platform::DiscTrack> SeenDrive::tracks()
{
    const std::lock_guard guard(mutex_);
    return seen_.tracks;
}

platform::DiscNames SeenDrive::names()
{
    const std::lock_guard guard(mutex_);
    return seen_.names;
}

void SeenDrive::awaitFirstLook(std::chrono::steady_clock::time_point deadline)
{
    std::unique_lock guard(mutex_);
    settledNow_.wait_until(guard, deadline, [this] { return settled_; });
}

Seen SeenDrive::seen() const
{
    const std::lock_guard guard(mutex_);
    return seen_;
}

void SeenDrive::publish(Seen seen)
{
    const std::lock_guard guard(mutex_);
    seen_ = std::move(seen);
}

void SeenDrive::settled()
{
    const std::lock_guard guard(mutex_);
    settled_ = true;
    settledNow_.notify_all();
}

}
