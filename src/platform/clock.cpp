#include "platform/clock.h"

#include <ctime>

namespace tonquay::platform {

std::chrono::year_month_day Clock::today() const
{
    const std::time_t seconds = Wall::clock::to_time_t(wallTime());
    std::tm local{};
    localtime_r(&seconds, &local);
    constexpr int firstYear = 1900;
    return std::chrono::year(local.tm_year + firstYear) / (local.tm_mon + 1) / local.tm_mday;
}

}
