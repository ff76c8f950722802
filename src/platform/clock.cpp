#include "platform/clock.h"

#include <ctime>

namespace tonquay::platform {

namespace {

std::tm localTime(Clock::Wall time)
{
    const std::time_t seconds = Clock::Wall::clock::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    return local;
}

}

std::chrono::year_month_day Clock::today() const
{
    const std::tm local = localTime(wallTime());
    constexpr int firstYear = 1900;
    return std::chrono::year(local.tm_year + firstYear) / (local.tm_mon + 1) / local.tm_mday;
}

std::chrono::hh_mm_ss<std::chrono::seconds> Clock::timeOfDay() const
{
    const std::tm local = localTime(wallTime());
    return std::chrono::hh_mm_ss(std::chrono::hours(local.tm_hour) + std::chrono::minutes(local.tm_min) +
                                 std::chrono::seconds(local.tm_sec));
}

}
