#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace tonquay::console {

/// Whole seconds of that many sectors, as the track table counts them: a half goes to the even second.
int wholeSeconds(std::int64_t sectors);

/// "3:25", and "1:03:25" from an hour on. A negative time counts as none.
std::string clockText(std::int64_t seconds);

/// Seconds that follow each other as spans: "0:12, 1:05-1:07".
std::string timesText(const std::vector<std::int32_t>& seconds);

/// How many times faster than play time: "12.3x"; "-" while no time has passed.
std::string speedText(double playSeconds, std::chrono::duration<double> taken);

}
