#pragma once

#include "app/program.h"
#include "console/encoded_verdict.h"
#include "console/rip_plan.h"
#include "console/rip_view.h"
#include "console/track_record.h"
#include "console/wma_verdict.h"
#include "platform/clock.h"
#include "platform/platform.h"
#include "platform/processes.h"

#include <string>
#include <vector>

namespace tonquay::console {

class RunHost;
class RunProcesses;

/// What became of each track of a run: its WAV file by what the reader delivered and what stands in it, its encoded
/// file by how the encoder ended and what other readers find in it.
class TrackJudge {
public:
    /// All outlive this. `records` has one entry for each track of `plan`, and is what the run writes down.
    TrackJudge(app::Program& program, platform::Platform& platform, RunProcesses& processes, RunHost& host,
               const RipPlan& plan, std::vector<TrackRecord>& records);

    /// To be called before the run makes its first file: what is older is not the run's.
    void runBegins();

    /// Looks, once, at the file that was written while a track was read: its WAV file, which may be gone when its
    /// encoder has ended, or its WMA file.
    void judgeWritten(std::size_t planned);

    /// Notes whether the encoder, just ended, has written its file.
    void encoderEnded(platform::Processes::Child child);

    /// Puts the genre that was asked for into the tags, where the list has it by that name.
    void setGenres();

    /// The run has no regular end; `why` is told of the tracks that are not whole.
    void brokenOff(const std::string& why) { brokenOff_ = why; }

    TrackVerdict verdictOn(std::size_t planned);

    /// Whether encoder programs are at work at all.
    bool encodes() const { return usesEncoder(plan_.format); }

private:
    FileVerdict verdictOnRecording(std::size_t planned) const;
    FileVerdict verdictOnWritten(std::size_t planned);
    WmaExpectation wmaExpectationOf(std::size_t planned);
    EncodedExpectation expectationOf(std::size_t planned) const;

    app::Program& program_;
    platform::Platform& platform_;
    RunProcesses& processes_;
    RunHost& host_;
    const RipPlan& plan_;
    std::vector<TrackRecord>& records_;
    platform::Clock::Wall begunAt_; ///< by the clock of the output folder
    std::string brokenOff_;
};

}
