#include "base/format.h"

#include "base/numbers.h"

#include <array>
#include <string_view>

namespace tonquay::base {

namespace {

std::wstring monthName(std::chrono::month month)
{
    constexpr std::array<std::wstring_view, 12> names{L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                                      L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
    const unsigned number = static_cast<unsigned>(month);
    return month.ok() ? std::wstring(names[number - 1]) : std::wstring();
}

}

std::wstring twoDigits(std::int64_t number)
{
    std::wstring text = digits(number);
    const std::size_t sign = number < 0 ? 1 : 0;
    if (text.size() < sign + 2)
        text.insert(sign, 1, L'0');
    return text;
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

std::wstring twoDecimals(std::int64_t hundredths)
{
    const std::int64_t whole = hundredths / 100;
    return (whole == 0 ? L"" : digits(whole)) + L'.' + twoDigits(hundredths % 100);
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

std::wstring groupedDigits(std::int64_t number)
{
    return number == 0 ? digits(number) : grouped(number);
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
    return twoDigits(static_cast<unsigned>(date.day())) + L'-' + monthName(date.month()) + L'-' +
           digits(static_cast<int>(date.year()));
}

std::wstring dateAndTime(std::chrono::local_seconds time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    return monthName(date.month()) + L'-' + digits(static_cast<unsigned>(date.day())) + L'-' +
           digits(static_cast<int>(date.year())) + L' ' + digits(std::chrono::make12(clock.hours()).count()) + L':' +
           twoDigits(clock.minutes().count()) + (std::chrono::is_am(clock.hours()) ? L"am" : L"pm");
}

}
