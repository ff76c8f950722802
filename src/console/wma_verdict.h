#pragma once

#include "base/result.h"
#include "console/file_verdict.h"
#include "platform/wma_file.h"

#include <chrono>
#include <functional>
#include <string>

namespace tonquay::console {

/// What a track's WMA file must be.
struct WmaExpectation {
    double playSeconds = 0; ///< of the track
    /// fileTimeNow() (judged_file.h) of the output folder, taken before the run.
    std::chrono::system_clock::time_point runBegan{};
    std::wstring title{}; ///< the tags as they were handed to the encoder
    std::wstring artist{};
    std::wstring album{};
    std::wstring genre{};
    std::wstring comment{};
    std::wstring year{};
};

/// Reads header and blocks of a file (RunHost::readWma).
using WmaReader = std::function<base::Result<platform::WmaFile>(const std::string& hostPath)>;

/// Looks at the finished file and tells whether it is what the run was to make. It is a plain file, written since the
/// run began, and Windows Media Audio; its header was finished and tells the track's length, to the millisecond that
/// its reader has; its blocks hold all of the sound and no block more; and its tags are the ones that were handed over,
/// character for character.
///
/// Costs reading the file once. Never fails; what cannot be read is not whole.
FileVerdict judgeWma(const std::string& hostPath, const WmaExpectation& expected, const WmaReader& read);

}
