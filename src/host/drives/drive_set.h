#pragma once

#include "host/discs/disc.h"
#include "platform/discs.h"

#include <memory>
#include <vector>

namespace tonquay::host {

/// One drive, or an image that counts as one. Every question is answered from what the drive's watch last saw, so none
/// of them blocks; the watch looks about once a second on a thread of its own. All calls from one thread, the logic's.
class Drive {
public:
    virtual ~Drive() = default;

    virtual const platform::DriveDescription& description() = 0; ///< as of now; valid until the next call

    virtual bool doorIsOpen() = 0;
    virtual bool doorIsLocked() = 0;

    /// The tracks of the audio disc that is in, data tracks included; empty without one, with an open door, or with a
    /// disc of data only.
    virtual std::vector<platform::DiscTrack> tracks() = 0;

    /// The disc itself for reading on one other thread; null when there is none. Each call opens it anew, so several
    /// readers do not disturb each other's place, and an older reader goes on until its disc says that it is gone.
    virtual std::shared_ptr<Disc> openDisc() = 0;

    /// CD-Text and sheet names of the disc that is in.
    virtual platform::DiscNames names() = 0;

    /// False when the drive cannot do it. A locked door does not open.
    virtual bool openDoor() = 0;
    virtual bool closeDoor() = 0;
    virtual bool lockDoor() = 0;
    virtual bool unlockDoor() = 0;
};

/// The drives by letter: the first is D.
class DriveSet {
public:
    virtual ~DriveSet() = default;

    virtual std::size_t count() = 0;
    virtual Drive& at(std::size_t index) = 0; ///< index below count()
};

/// Letter of the drive at an index: D, E, ...
constexpr wchar_t driveLetter(std::size_t index)
{
    return static_cast<wchar_t>(L'D' + index);
}

}
