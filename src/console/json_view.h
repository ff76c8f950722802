#pragma once

#include "console/rip_view.h"

namespace tonquay::console {

/// For programs: one JSON object a line, told apart by "event": run, track, progress (at most four a second; none when
/// quiet), verdict, end. Keys are only ever added to.
class JsonView final : public RipView {
public:
    enum class Progress { shown, hidden };

    JsonView(Screen& screen, Progress progress) : screen_(screen), progress_(progress) {}

    void runBegins(const RunFacts& run) override;
    void trackBegins(const TrackFacts& track) override;
    void encodingBegins(const TrackFacts& track) override { track_ = track.number; }
    void progress(const RunProgress& progress) override;
    void trackEnds(const TrackVerdict& verdict) override;
    void trackIsLeftOut(const TrackVerdict& track) override;
    void runEnds(const RunEnd& end) override;

private:
    Screen& screen_;
    Progress progress_;
    int track_ = 0;
    Seconds nextProgress_{0};
};

}
