#include "host/drives/host_discs.h"

#include "base/text.h"

#include <utility>

namespace tonquay::host {
namespace {

using base::Failure;
using platform::DriveProblem;

Failure::Kind kindOf(DriveProblem problem)
{
    switch (problem) {
    case DriveProblem::noPermission:
    case DriveProblem::busy: return Failure::Kind::refused;
    case DriveProblem::unreadable: return Failure::Kind::unreadable;
    case DriveProblem::dataDisc: return Failure::Kind::invalid;
    case DriveProblem::none:
    case DriveProblem::noDevice:
    case DriveProblem::trayOpen:
    case DriveProblem::noDisc: break;
    }
    return Failure::Kind::notFound;
}

}

HostDiscs::HostDiscs(DriveSet& drives, Identifier identify) : drives_(drives), identify_(std::move(identify)) {}

std::vector<platform::DriveDescription> HostDiscs::drives()
{
    std::vector<platform::DriveDescription> descriptions;
    for (std::size_t index = 0; index < drives_.count(); ++index)
        descriptions.push_back(drives_.at(index).description());
    return descriptions;
}

base::Result<platform::DiscTable> HostDiscs::read(wchar_t letter)
{
    const wchar_t wanted = base::upper(letter);
    for (std::size_t index = 0; index < drives_.count(); ++index) {
        if (driveLetter(index) != wanted)
            continue;
        Drive& drive = drives_.at(index);
        // The problem and the tracks are asked one after the other: a disc may come or go in between.
        std::vector<platform::DiscTrack> tracks = drive.tracks();
        if (tracks.empty()) {
            const platform::DriveDescription& description = drive.description();
            return Failure{kindOf(description.problem), description.hostPath,
                           description.problemText.empty() ? "The disc has only just come in: try again"
                                                           : description.problemText};
        }
        platform::DiscTable table;
        table.names = drive.names();
        table.discId = identify_(tracks);
        table.tracks = std::move(tracks);
        return table;
    }
    return Failure{Failure::Kind::notFound, base::utf8(std::wstring{wanted, L':'}), "There is no such drive"};
}

}
