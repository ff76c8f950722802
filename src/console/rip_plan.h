#pragma once

#include "base/red_book.h"
#include "base/result.h"
#include "console/options.h"
#include "console/rip_checks.h"
#include "platform/discs.h"
#include "platform/file_system.h"
#include "state/disc_info.h"
#include "state/settings.h"

#include <optional>
#include <string>
#include <vector>

namespace tonquay::console {

/// One track that a run makes a file of.
struct PlannedTrack {
    std::int32_t row = 0; ///< in the program's list, from 0
    platform::DiscTrack track;
    std::wstring wavPath;    ///< in the program's form
    std::string wavHostPath; ///< of the WAV file, which is not what the user asked for when it is encoded
    std::wstring path;       ///< of the file that the user asked for
    std::string hostPath;
    std::int64_t soundBytes = 0;   ///< to be read: of the whole track, unless only a part is wanted
    std::int64_t encodedBytes = 0; ///< of an MP3, Ogg or WMA file, guessed; else 0
};

/// What a run is going to do, as the names and settings of the started program have it.
struct RipPlan {
    std::string folder; ///< host path of the folder that the files go to
    Format format = Format::wav;
    bool wavsPileUp = false; ///< what reading the tracks writes is all there at one time
    /// WAV files would not be found again, since a title of one letter gives its file another name, or the encoder's
    /// batch is unsafe. One track at a time the run makes the same files.
    bool oneByOne = false;
    /// Where tracks lie while they are recorded as they are heard, as a host path; nothing when they are read.
    std::optional<std::string> recordingFolder{};
    std::vector<PlannedTrack> tracks;
};

/// `rows` are places in the disc's table, from 0.
RipPlan makePlan(Format format, const std::vector<std::size_t>& rows, const platform::DiscTable& table,
                 state::DiscInfo disc, const state::RipSettings& settings, platform::FileSystem& files);

/// Files of the plan that the disc's own image is made of, by the sheet at `image` (empty for a drive): writing them
/// would destroy the disc. One sentence each.
std::vector<std::string> sourceProblems(const RipPlan& plan, const std::string& image);

/// Why the run cannot end well, one sentence each; none when it can. Makes the output folder.
std::vector<std::string> problemsOf(const RipPlan& plan, platform::FileSystem& files);

/// Seconds of that many bytes of sound.
constexpr double playSeconds(std::int64_t soundBytes)
{
    return static_cast<double>(soundBytes) / base::red_book::bytesPerSecond;
}

}
