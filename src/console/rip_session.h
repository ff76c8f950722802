#pragma once

#include "app/program.h"
#include "console/rip_plan.h"
#include "console/rip_view.h"
#include "console/track_judge.h"
#include "console/track_record.h"
#include "platform/clock.h"
#include "platform/decode_report.h"
#include "platform/event_loop.h"

#include <optional>
#include <string>
#include <vector>

namespace tonquay::console {

class RunHost;
class RunProcesses;

/// Carries out a planned run on a started program, by pressing its keys, and tells a view what happens: it watches the
/// main window's displays as a person does. A WAV or WMA file is judged when its track is done, encoded files when the
/// last encoder has ended and all tags are written.
class RipSession {
public:
    RipSession(app::Program& program, platform::Platform platform, RunProcesses& processes, RunHost& host,
               RipView& view, RipPlan plan);

    /// Selects the planned rows, presses Start, and returns when the run is over.
    RunEnd run();

    /// Ctrl-C. The first one is the Stop key: the run ends after the track in hand, which a drive control breaks off;
    /// the second one ends the encoders, breaks the run off and ends the program.
    void interrupt();

    /// Tells the view of every track that has no whole file, since the program is about to end; `why` for the
    /// unfinished ones.
    void breakOff(const std::string& why);

    /// What went wrong last, for the verdict on the track in hand.
    void noteProblem(std::string text);

    /// What the track in hand is recorded from.
    void noteSource(std::string text);

    void decodeEnded(const platform::DecodeReport& report);

private:
    void trackBegins(std::int32_t number);
    void trackLeavesHand();
    void encoderStarted(const encode::StartedEncoder& encoder);
    void lookAtEncoders();
    void showRestOfEncoders();
    std::ptrdiff_t encodersStarted() const;
    double partRead() const;
    double encodedPart() const;
    TrackFacts factsOf(std::size_t planned, int ordinal) const;
    void tell(std::size_t planned, const TrackVerdict& verdict);
    void tellRest();
    void showProgress();
    Seconds elapsed() const;

    app::Program& program_;
    platform::Platform platform_;
    RunProcesses& processes_;
    RunHost& host_;
    RipView& view_;
    RipPlan plan_;
    RunEnd end_;
    std::optional<std::size_t> inHand_;      ///< the track that is read, as index into the plan
    std::optional<std::size_t> encodingNow_; ///< the one whose encoder was started last while none was read
    std::vector<TrackRecord> records_;       ///< one for each track of the plan
    TrackJudge judge_;
    double playSecondsDone_ = 0;
    double playSecondsTotal_ = 0;
    platform::Clock::Monotonic started_;
    platform::Clock::Monotonic trackStarted_;
    bool interrupted_ = false;
};

}
