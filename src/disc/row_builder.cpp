#include "disc/row_builder.h"

#include "base/format.h"
#include "base/numbers.h"

namespace tonquay::disc {

std::wstring trackRow(std::int32_t number, std::int32_t seconds, std::wstring_view title)
{
    // Seconds of CD sound in a megabyte, as the column has always counted them.
    constexpr double secondsPerMegabyte = 5.94;
    const double tenths = base::roundHalfEven(seconds / secondsPerMegabyte * 10);
    const std::wstring size = base::oneDecimal(static_cast<std::int64_t>(tenths));
    const std::wstring time = base::digits(seconds / 60) + L':' + base::twoDigits(seconds % 60);
    return L"Track " + base::twoDigits(number) + L'\t' + time + L"\t      " + size + L"\t           " +
           std::wstring(title);
}

void addTrackRow(controls::MultiSelectList& list, const state::DiscInfo& disc, std::int32_t number,
                 std::int32_t seconds)
{
    list.add(trackRow(number, seconds, disc.trackTitles(number)));
}

void addControlTrack(controls::MultiSelectList& list, state::DiscInfo& disc, platform::AcdControl& acd,
                     std::int16_t number)
{
    constexpr std::int32_t msPerSecond = 1000;
    if (const auto length = acd.GetTrackLength(number))
        disc.trackSeconds.set(number, *length / msPerSecond);
    addTrackRow(list, disc, number, disc.trackSeconds(number));
}

}
