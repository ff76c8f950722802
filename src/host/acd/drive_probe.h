#pragma once

#include "base/result.h"
#include "host/audio/thread_reaper.h"
#include "host/drives/drive_set.h"

namespace tonquay::host {

/// Whether a drive can deliver audio: it can be reached, and of the disc that is in it some sector gives data. A drive
/// without an audio disc has nothing to fail at. Waits for the drive, ten seconds at most.
base::Status probeDrive(Drive& drive, ThreadReaper& reaper);

}
