#pragma once

#include "console/rip_view.h"

#include <optional>

namespace tonquay::console {

/// For terminals: finished tracks scroll by above three live lines, the track in hand, its bar, and the bar of the
/// whole run. The lines never reach the last column, so no terminal wraps them; they are drawn ten times a second at
/// most.
class BarView final : public RipView {
public:
    explicit BarView(Screen& screen) : screen_(screen) {}

    void runBegins(const RunFacts& run) override;
    void trackBegins(const TrackFacts& track) override;
    void encodingBegins(const TrackFacts& track) override;
    void progress(const RunProgress& progress) override;
    void trackEnds(const TrackVerdict& verdict) override;
    void trackIsLeftOut(const TrackVerdict& track) override;
    void runEnds(const RunEnd& end) override;

private:
    void draw();
    void erase();

    Screen& screen_;
    RunFacts run_;
    std::optional<TrackFacts> track_;
    RunProgress progress_;
    Seconds nextDraw_{0};
    bool drawn_ = false;
};

}
