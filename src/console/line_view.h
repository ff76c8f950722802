#pragma once

#include "console/rip_view.h"

namespace tonquay::console {

/// For pipes and files: a line for each finished track, a summary at the end. Quiet leaves the summary.
class LineView final : public RipView {
public:
    enum class Tracks { shown, hidden };

    LineView(Screen& screen, Tracks tracks) : screen_(screen), tracks_(tracks) {}

    void runBegins(const RunFacts&) override {}
    void trackBegins(const TrackFacts&) override {}
    void encodingBegins(const TrackFacts&) override {}
    void progress(const RunProgress&) override {}
    void trackEnds(const TrackVerdict& verdict) override;
    void trackIsLeftOut(const TrackVerdict& track) override;
    void runEnds(const RunEnd& end) override;

private:
    Screen& screen_;
    Tracks tracks_;
};

}
