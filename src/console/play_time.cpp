#include "console/play_time.h"

#include "base/numbers.h"
#include "base/red_book.h"

#include <fmt/format.h>

#include <algorithm>

namespace tonquay::console {

int wholeSeconds(std::int64_t sectors)
{
    return static_cast<int>(base::roundHalfEven(static_cast<double>(sectors) / base::red_book::sectorsPerSecond));
}

std::string clockText(std::int64_t seconds)
{
    seconds = std::max<std::int64_t>(0, seconds);
    if (seconds < 3600)
        return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
    return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds % 3600 / 60, seconds % 60);
}

std::string timesText(const std::vector<std::int32_t>& seconds)
{
    std::string text;
    for (std::size_t i = 0; i < seconds.size(); ++i) {
        const std::size_t first = i;
        while (i + 1 < seconds.size() && seconds[i + 1] == seconds[i] + 1)
            ++i;
        if (!text.empty())
            text += ", ";
        text += clockText(seconds[first]);
        if (i > first)
            text += "-" + clockText(seconds[i]);
    }
    return text;
}

std::string speedText(double playSeconds, std::chrono::duration<double> taken)
{
    constexpr double leastTime = 1e-6;
    if (taken.count() < leastTime)
        return "-";
    return fmt::format("{:.1f}x", playSeconds / taken.count());
}

}
