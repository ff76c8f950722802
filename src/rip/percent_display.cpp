#include "rip/percent_display.h"

#include "base/numbers.h"

namespace tonquay::rip {

namespace {

constexpr std::int16_t whole = 100;

std::wstring percentText(std::int16_t value)
{
    return base::digits(value) + L"%";
}

}

std::int16_t percentOf(double value)
{
    return value > 0 ? static_cast<std::int16_t>(value < whole ? value : whole) : std::int16_t{0};
}

bool showTrackPercent(state::RipdeckControls& main, std::int16_t track)
{
    main.Trackprogress.value = track;
    const std::wstring text = percentText(track);
    controls::Property<std::wstring>& shown = main.Label6[state::trackPercentText].caption;
    if (shown.get() == text)
        return false;
    shown = text;
    return true;
}

void showTotalPercent(state::RipdeckControls& main, std::int16_t total, std::int16_t track)
{
    if (total == whole && track < whole)
        return;
    main.Totalprogress.value = total;
    main.Label6[state::totalPercentText].caption = percentText(total);
}

}
