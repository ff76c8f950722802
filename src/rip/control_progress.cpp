#include "rip/control_progress.h"

#include "base/numbers.h"

#include <algorithm>
#include <cmath>

namespace tonquay::rip {

namespace {

std::int16_t percent(double value)
{
    return static_cast<std::int16_t>(std::clamp(std::round(value), 0.0, 100.0));
}

std::wstring percentText(std::int16_t value)
{
    return base::digits(value) + L"%";
}

}

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
    constexpr std::int16_t whole = 100;
    const std::int16_t track = percent(tenthsOfPercent * 0.1);
    main_.Trackprogress.value = track;
    const std::wstring text = percentText(track);
    controls::Property<std::wstring>& shown = main_.Label6[state::trackPercentText].caption;
    if (shown.get() == text)
        return;
    shown = text;
    if (state_.run.selectedCount < 1)
        return;
    const std::int16_t total = percent(((state_.run.rippedCount - 1) * 100.0 + track) / state_.run.selectedCount);
    // The last step to the full bar is not to be seen before the track has made it.
    if (total == whole && track < whole)
        return;
    main_.Totalprogress.value = total;
    main_.Label6[state::totalPercentText].caption = percentText(total);
}

}
