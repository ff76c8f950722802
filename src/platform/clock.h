#pragma once

#include <chrono>

namespace tonquay::platform {

class Clock {
public:
    using Monotonic = std::chrono::steady_clock::time_point;
    using Wall = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;

    /// Never goes back; for spans of time.
    virtual Monotonic now() const = 0;

    /// The calendar time; for the ages of files.
    virtual Wall wallTime() const = 0;

    /// The date by the user's own time zone.
    virtual std::chrono::year_month_day today() const;

    /// The time of day by the user's own time zone, in whole seconds.
    virtual std::chrono::hh_mm_ss<std::chrono::seconds> timeOfDay() const;

    /// Blocks this thread for that long without passing through the event loop: no handler runs meanwhile.
    virtual void delay(std::chrono::milliseconds time) = 0;
};

}
