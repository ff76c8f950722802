#pragma once

#include "console/exit_status.h"
#include "console/options.h"
#include "console/run_host.h"
#include "console/screen.h"

namespace tonquay::console {

/// Changes the tags of MP3 and Ogg files, where that is asked for, and shows the tags and the sound of MP3, Ogg and WAV
/// files, one after the other. A file that cannot be read or changed is named, and costs the others nothing.
ExitStatus showTags(Screen& screen, const TagsOptions& options, RunHost& host);

}
