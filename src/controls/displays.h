#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

namespace tonquay::controls {

/// A bar from 0 to 100. Code that sets it fires nothing.
struct ProgressPanel {
    Property<std::int16_t> value{0};
    Property<bool> visible{true};
    Property<bool> bordered{false};      ///< the frame around it is drawn
    Property<std::int32_t> barColour{0}; ///< 0x00BBGGRR

    Handler<double> mouseUp; ///< released by the user at this fraction of its width, 0 to 1
};

/// A part of a window that carries other controls.
struct Panel {
    Property<bool> visible{true};
    Property<std::wstring> toolTip;

    Handler<MouseButton> mouseUp; ///< on the panel itself, or with the right button on what it carries
};

/// One channel of a level meter: a picture of the full bar, with a box over the part that is not reached.
class VuMeter {
public:
    /// The part of the bar that shows, 0 to 1; nothing when the meter is cleared, for a view to draw as at rest.
    const std::optional<double>& level() const { return level_; }
    Following follow(std::function<void(const std::optional<double>&)> follower)
    {
        return level_.follow(std::move(follower));
    }

    void clear() { level_ = std::nullopt; }

    /// Above 1 the whole bar shows.
    void show(double level) { level_ = std::clamp(level, 0.0, 1.0); }

private:
    Property<std::optional<double>> level_;
};

}
