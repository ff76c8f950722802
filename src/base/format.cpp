#include "base/format.h"

#include "base/numbers.h"

#include <array>
#include <string_view>

namespace tonquay::base {

std::wstring twoDigits(std::int64_t number)
{
    const std::wstring text = digits(number);
    return text.size() < 2 ? L"0" + text : text;
}

std::wstring lastTwoDigits(std::int64_t number)
{
    const std::wstring text = L"00" + digits(number);
    return text.substr(text.size() - 2);
}

std::wstring oneDecimal(std::int64_t tenths)
{
    const std::int64_t whole = tenths / 10;
    return (whole == 0 ? L"" : digits(whole)) + L'.' + digits(tenths % 10);
}

std::wstring grouped(std::int64_t number)
{
    if (number == 0)
        return {};
    std::wstring text = digits(number);
    const std::size_t first = number < 0 ? 1 : 0;
    for (std::size_t place = text.size(); place > first + 3;) {
        place -= 3;
        text.insert(place, 1, L',');
    }
    return text;
}

std::wstring hoursMinutesSeconds(std::int32_t seconds)
{
    const std::int32_t hours = seconds / 3600;
    const std::int32_t minutes = seconds % 3600 / 60;
    const std::wstring tail = lastTwoDigits(minutes) + L':' + lastTwoDigits(seconds % 60);
    return hours > 0 ? lastTwoDigits(hours) + L':' + tail : tail;
}

std::wstring dayMonthYear(std::chrono::year_month_day date)
{
    constexpr std::array<std::wstring_view, 12> months{L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                                       L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
    const unsigned month = static_cast<unsigned>(date.month());
    const std::wstring_view name = month >= 1 && month <= months.size() ? months[month - 1] : std::wstring_view();
    return twoDigits(static_cast<unsigned>(date.day())) + L'-' + std::wstring(name) + L'-' +
           digits(static_cast<int>(date.year()));
}

}
