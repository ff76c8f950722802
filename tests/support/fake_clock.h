#pragma once

#include "platform/clock.h"

namespace tonquay::test {

/// Time that only moves when a test, a wait or a delay moves it. It starts at the same moment in every test.
class FakeClock final : public platform::Clock {
public:
    Monotonic now() const override { return Monotonic{} + elapsed_; }
    Wall wallTime() const override { return start + std::chrono::duration_cast<Wall::duration>(elapsed_); }
    /// By the calendar of Greenwich, wherever the test runs: 9 September 2001.
    std::chrono::year_month_day today() const override { return std::chrono::floor<std::chrono::days>(wallTime()); }
    /// By Greenwich as well: 02:46:40 at first.
    std::chrono::hh_mm_ss<std::chrono::seconds> timeOfDay() const override
    {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(wallTime());
        return std::chrono::hh_mm_ss(seconds - std::chrono::floor<std::chrono::days>(seconds));
    }
    void delay(std::chrono::milliseconds time) override { elapsed_ += time; }

    std::chrono::nanoseconds elapsed() const { return elapsed_; }
    void advance(std::chrono::nanoseconds time) { elapsed_ += time; }

private:
    static constexpr Wall start{std::chrono::seconds{1'000'000'000}};

    std::chrono::nanoseconds elapsed_{std::chrono::hours{1}};
};

}
