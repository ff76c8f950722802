#pragma once

#include "base/result.h"
#include "console/options.h"
#include "console/run_host.h"
#include "platform/platform.h"

#include <optional>
#include <string>

namespace tonquay::console {

/// The encoder of a run.
struct EncoderChoice {
    std::wstring path;                   ///< in the program's form, never empty
    std::optional<std::string> remark{}; ///< one line that the user should read
};

/// Finds the encoder for a format, and tries whether it starts. Without `asked`, a host path or a bare name, it is the
/// one that the run's program folder holds.
///
/// One that was asked for is linked into the program folder, so that only its own name tells its kind and no folder
/// above it does; where a folder's name would have told another kind, the remark says so. Fails, with what to do, when
/// there is no such program, it cannot be started, or it makes another format. A run to WAV or WMA needs none.
base::Result<EncoderChoice> chooseEncoder(Format format, const std::optional<std::string>& asked, RunHost& host,
                                          platform::Platform& platform);

}
