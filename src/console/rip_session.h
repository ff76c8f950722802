#pragma once

#include "app/program.h"
#include "console/rip_plan.h"
#include "console/rip_view.h"
#include "platform/clock.h"
#include "platform/decode_report.h"
#include "platform/event_loop.h"

#include <optional>
#include <string>
#include <vector>

namespace tonquay::console {

/// Carries out a planned run on a started program, by pressing its keys, and tells a view what happens: it watches the
/// main window's displays as a person does, and judges each file when its track is done.
class RipSession {
public:
    RipSession(app::Program& program, platform::Platform platform, RipView& view, RipPlan plan);

    /// Selects the planned rows, presses Start, and returns when the run is over. `format` as shown, "wav".
    RunEnd run(const std::string& format);

    /// Ctrl-C. The first one stops the run after the track in hand; the second one names the unfinished file and ends
    /// the program.
    void interrupt();

    void decodeEnded(const platform::DecodeReport& report) { report_ = report; }

private:
    void trackBegins(std::int32_t number);
    void trackEnds();
    void nameLeftOut();
    void showProgress();
    Seconds elapsed() const;
    double playSecondsOf(std::size_t planned) const;

    app::Program& program_;
    platform::Platform platform_;
    RipView& view_;
    RipPlan plan_;
    RunEnd end_;
    std::optional<std::size_t> inHand_; ///< index into the plan
    std::size_t begun_ = 0;
    double playSecondsDone_ = 0;
    double playSecondsTotal_ = 0;
    std::optional<platform::DecodeReport> report_;
    platform::Clock::Monotonic started_;
    platform::Clock::Monotonic trackStarted_;
    bool interrupted_ = false;
};

}
