#pragma once

#include "console/exit_status.h"
#include "console/options.h"
#include "console/run_host.h"
#include "console/screen.h"
#include "platform/discs.h"

namespace tonquay::console {

/// `tonquay rip` on the disc of a chosen drive: checks everything first, then rips, then judges each file.
ExitStatus rip(Screen& screen, const RipOptions& options, RunHost& host, const platform::DriveDescription& drive,
               const platform::DiscTable& table);

}
