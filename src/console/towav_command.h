#pragma once

#include "console/exit_status.h"
#include "console/options.h"
#include "console/run_host.h"
#include "console/screen.h"

namespace tonquay::console {

/// Decodes MP3 files to WAV files beside them, by the queue of the program's own dialog. One line for each whole WAV
/// file; a complaint for each that is not, with the reason.
ExitStatus toWav(Screen& screen, const ToWavOptions& options, RunHost& host);

}
