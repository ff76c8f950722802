#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace tonquay::controls {

/// A value between two ends. Whether code that sets it fires change depends on the slider: those that a person drags
/// to hear something do, one that only shows a place does not.
class Slider {
public:
    enum class OnCode { fires, silent };

    struct Range {
        std::int32_t min;
        std::int32_t max;
        std::int32_t start;
    };

    Slider(Range range, OnCode onCode) : range_(range), onCode_(onCode), value_(range.start) {}

    Property<bool> visible{true};
    Property<std::wstring> toolTip;
    Property<bool> busyPointer{false};
    Property<bool> toolTipShown{true};

    Handler<> change; ///< the value moved
    Handler<> mouseDown;
    Handler<> mouseUp;
    Handler<> click; ///< released by the user at its present value

    std::int32_t min() const { return range_.min; }
    std::int32_t max() const { return range_.max; }
    std::int32_t value() const { return value_; }
    Following follow(std::function<void(const std::int32_t&)> follower) { return value_.follow(std::move(follower)); }

    /// Clamped to its ends.
    void setValue(std::int32_t value)
    {
        const std::int32_t clamped = std::clamp(value, range_.min, range_.max);
        if (clamped == value_)
            return;
        value_ = clamped;
        if (onCode_ == OnCode::fires)
            change();
    }

    /// A movement by the user's hand: always fires.
    void drag(std::int32_t value)
    {
        value_ = std::clamp(value, range_.min, range_.max);
        change();
    }

    void reset() { value_ = range_.start; }

private:
    Range range_;
    OnCode onCode_;
    Property<std::int32_t> value_;
};

}
