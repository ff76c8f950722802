#include "host/audio/cd_text_block.h"
#include "host/audio/host_audio_engine.h"

#include <limits>

/// The questions about drives and the discs in them.
namespace tonquay::host {

Drive* HostAudioEngine::driveAt(std::uint32_t drive)
{
    return drive < drives_.count() ? &drives_.at(drive) : nullptr;
}

bool HostAudioEngine::BASS_CD_GetInfo(std::uint32_t drive, DriveInfo& info)
{
    Drive* const asked = driveAt(drive);
    if (asked == nullptr)
        return false;
    const platform::DriveDescription& known = asked->description();
    info = {
        .vendor = known.vendor,
        .product = known.product,
        .rev = known.revision,
        .letter = static_cast<std::int32_t>(known.letter) - L'A',
        .rwflags = known.abilities,
        .canopen = known.canOpen ? 1 : 0,
        .canlock = known.canLock ? 1 : 0,
        .maxspeed = known.maxSpeedKbps,
        .cache = known.cacheKb,
    };
    return true;
}

bool HostAudioEngine::BASS_CD_IsReady(std::uint32_t drive)
{
    Drive* const asked = driveAt(drive);
    return asked != nullptr && !asked->doorIsOpen() && !asked->tracks().empty();
}

std::int32_t HostAudioEngine::BASS_CD_GetTracks(std::uint32_t drive)
{
    Drive* const asked = driveAt(drive);
    const std::size_t count = asked == nullptr ? 0 : asked->tracks().size();
    return count == 0 ? -1 : static_cast<std::int32_t>(count);
}

std::int32_t HostAudioEngine::BASS_CD_GetTrackLength(std::uint32_t drive, std::uint32_t track)
{
    Drive* const asked = driveAt(drive);
    if (asked == nullptr)
        return -1;
    const auto tracks = asked->tracks();
    if (track >= tracks.size() || !tracks[track].audio)
        return -1;
    const std::int64_t bytes = static_cast<std::int64_t>(tracks[track].sectorCount) * std::int64_t{Disc::sectorBytes};
    return bytes >= 0 && bytes <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(bytes) : -1;
}

std::string HostAudioEngine::BASS_CD_GetID(std::uint32_t drive, std::uint32_t id)
{
    Drive* const asked = driveAt(drive);
    return asked != nullptr && id == BASS_CDID_TEXT ? cdTextBlock(asked->names()) : std::string();
}

bool HostAudioEngine::BASS_CD_Door(std::uint32_t drive, std::uint32_t action)
{
    Drive* const asked = driveAt(drive);
    if (asked == nullptr)
        return false;
    switch (action) {
    case closeDoor: return asked->closeDoor();
    case openDoor: return asked->openDoor();
    case lockDoor: return asked->lockDoor();
    case unlockDoor: return asked->unlockDoor();
    default: return false;
    }
}

bool HostAudioEngine::BASS_CD_DoorIsOpen(std::uint32_t drive)
{
    Drive* const asked = driveAt(drive);
    return asked != nullptr && asked->doorIsOpen();
}

bool HostAudioEngine::BASS_CD_DoorIsLocked(std::uint32_t drive)
{
    Drive* const asked = driveAt(drive);
    return asked != nullptr && asked->doorIsLocked();
}

}
