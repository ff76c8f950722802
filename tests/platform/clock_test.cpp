#include "platform/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

using namespace tonquay;
using namespace std::chrono_literals;

/// Stands at 9 September 2001, 23:46:40 in Greenwich.
class StandingClock final : public platform::Clock {
public:
    Monotonic now() const override { return {}; }
    Wall wallTime() const override { return Wall{1'000'079'200s}; }
    void delay(std::chrono::milliseconds) override {}
};

TEST(Clock, dateAndTimeOfDayAreThoseOfTheUsersTimeZone)
{
    setenv("TZ", "XYZ-02:30", 1);
    tzset();
    const StandingClock clock;
    EXPECT_EQ(clock.today(), std::chrono::year(2001) / 9 / 10);
    EXPECT_EQ(clock.timeOfDay().to_duration(), 2h + 16min + 40s);
    unsetenv("TZ");
    tzset();
}

}
