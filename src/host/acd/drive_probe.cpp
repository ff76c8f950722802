#include "host/acd/drive_probe.h"

#include "host/audio/background_thread.h"

#include <chrono>
#include <memory>
#include <span>
#include <system_error>
#include <vector>

namespace tonquay::host {

namespace {

/// A scratch is no reason to take a drive for one that cannot read, so places all over the disc are tried.
bool someSectorGivesData(Disc& disc)
{
    std::vector<std::byte> sector(Disc::sectorBytes);
    for (const platform::DiscTrack& track : disc.tracks())
        if (track.audio && track.sectorCount > 0 &&
            disc.read(track.firstSector + track.sectorCount / 2, sector).sectors == 1)
            return true;
    return false;
}

}

base::Status probeDrive(Drive& drive, ThreadReaper& reaper)
{
    using base::Failure;
    constexpr std::chrono::seconds patience{10};
    const platform::DriveDescription about = drive.description();
    if (about.problem == platform::DriveProblem::noDevice || about.problem == platform::DriveProblem::noPermission)
        return Failure{Failure::Kind::refused, about.hostPath, about.problemText};
    std::shared_ptr<Disc> disc = drive.openDisc();
    if (!disc)
        return {};

    const auto readable = std::make_shared<bool>(false);
    BackgroundThread reading;
    try {
        reading = startInBackground([disc = std::move(disc), readable] { *readable = someSectorGivesData(*disc); });
    } catch (const std::system_error& error) {
        return Failure{Failure::Kind::other, about.hostPath, error.what()};
    }
    const bool answered = reading.ended.wait_for(patience) == std::future_status::ready;
    const bool good = answered && *readable;
    reaper.take(std::move(reading));
    if (good)
        return {};
    return Failure{Failure::Kind::unreadable, about.hostPath,
                   answered ? "no track gives any data" : "the drive does not answer"};
}

}
