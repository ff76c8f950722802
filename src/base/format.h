#pragma once

#include <chrono>
#include <cstdint>
#include <string>

/// The few formats that the program shows, each by what it is for. None depends on the locale.
namespace tonquay::base {

/// At least two digits: 7 is "07", 12 is "12", 100 is "100", -7 is "-07".
std::wstring twoDigits(std::int64_t number);

/// The last two digits only: 7 is "07", 100 is "00".
std::wstring lastTwoDigits(std::int64_t number);

/// One decimal, and no digit before the point when there is none: 101.9 is "101.9", 0.5 is ".5", 0 is ".0".
/// `tenths` is the value times ten, rounded.
std::wstring oneDecimal(std::int64_t tenths);

/// The same with two: 101.92 is "101.92", 0.05 is ".05", 0 is ".00". `hundredths` is the value times 100, rounded.
std::wstring twoDecimals(std::int64_t hundredths);

/// Groups of three with commas, and no digit at all for 0: 1411200 is "1,411,200", 0 is "".
std::wstring grouped(std::int64_t number);

/// The same with one digit at least: 0 is "0".
std::wstring groupedDigits(std::int64_t number);

/// A play time in two-digit fields: "03:25" under an hour, else "01:03:25"; of the hours only the last two digits
/// show.
std::wstring hoursMinutesSeconds(std::int32_t seconds);

/// A date as "09-Sep-2001", the months in English.
std::wstring dayMonthYear(std::chrono::year_month_day date);

/// A date and a time of day, to the minute that has begun: "Sep-9-2001 3:05pm". Noon is 12:00pm, midnight 12:00am.
std::wstring dateAndTime(std::chrono::local_seconds time);

}
