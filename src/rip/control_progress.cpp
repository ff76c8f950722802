#include "rip/control_progress.h"

#include "rip/percent_display.h"

#include <cmath>

namespace tonquay::rip {

ControlProgress::ControlProgress(state::AppState& state, state::RipdeckControls& ripdeck, platform::AcdControl& acd)
    : state_(state),
      main_(ripdeck),
      acd_(acd)
{
    acd_.setEvents({.ripProgress = [this](std::int32_t tenths) { ripProgress(tenths); },
                    .ripDone = [this] { state_.flags.acdTrackDone = true; }});
}

ControlProgress::~ControlProgress()
{
    acd_.setEvents({});
}

void ControlProgress::ripProgress(std::int32_t tenthsOfPercent)
{
    const std::int16_t track = percentOf(std::round(tenthsOfPercent * 0.1));
    if (!showTrackPercent(main_, track) || state_.run.selectedCount < 1)
        return;
    const double total = ((state_.run.rippedCount - 1) * 100.0 + track) / state_.run.selectedCount;
    showTotalPercent(main_, percentOf(std::round(total)), track);
}

}
