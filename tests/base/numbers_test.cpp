#include "base/format.h"
#include "base/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace tonquay::base;

TEST(Numbers, valReadsTheNumberAtTheStart)
{
    const struct {
        const wchar_t* text;
        double value;
    } cases[] = {
        {L"", 0},
        {L"abc", 0},
        {L"12", 12},
        {L"  12abc34", 12},
        {L"1 2 3", 123},
        {L"1\t2\n3", 123},
        {L"-5", -5},
        {L"- 5", -5},
        {L"+5", 5},
        {L"--5", 0},
        {L"3.25", 3.25},
        {L".5", 0.5},
        {L"-.5x", -0.5},
        {L"5.", 5},
        {L"1.2.3", 1.2},
        {L"1,5", 1},
        {L"1e3", 1000},
        {L"1E+3", 1000},
        {L"1d2", 100},
        {L"25D-1", 2.5},
        {L".", 0},
        {L"-", 0},
        {L"e5", 0},
        {L"007", 7},
        {L"1 000 000", 1000000},
        {L"½", 0},
        {L"٣", 0},
        {L"１", 0},
        {L"0x10", 0},
        {L"inf", 0},
        {L"nan", 0},
        {L"2147483648", 2147483648.0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(val(c.text), c.value) << ::testing::PrintToString(c.text);
    EXPECT_TRUE(std::isfinite(val(std::wstring(100000, L'9'))));
    EXPECT_EQ(val(std::wstring(100000, L' ') + L"7"), 7);
}

TEST(Numbers, anExponentWithoutDigitsIsNoPartOfTheNumber)
{
    EXPECT_EQ(val(L"12e"), 12);
    EXPECT_EQ(val(L"12e+"), 12);
    EXPECT_EQ(val(L"12 dB"), 12);
    EXPECT_EQ(val(L"2001 Edition"), 2001);
}

TEST(Numbers, tiesGoToEven)
{
    const double cases[][2] = {{0.5, 0},    {1.5, 2},    {2.5, 2},   {-0.5, 0},          {-1.5, -2}, {-2.5, -2},
                               {2.4999, 2}, {2.5001, 3}, {-2.6, -3}, {1e15 + 0.5, 1e15}, {7, 7}};
    for (const auto& c : cases)
        EXPECT_EQ(roundHalfEven(c[0]), c[1]) << c[0];
}

TEST(Numbers, aFieldTakesOnlyWhatFits)
{
    std::int16_t small = 1;
    EXPECT_TRUE(store(32767.4, small));
    EXPECT_EQ(small, 32767);
    for (const double bad : {32767.5, 32768.0, -32769.0, 1e300, -1e300, std::nan(""), HUGE_VAL})
        EXPECT_FALSE(store(bad, small)) << bad;
    EXPECT_EQ(small, 32767);
    EXPECT_TRUE(store(-32768.5, small));
    EXPECT_EQ(small, -32768);
    std::int32_t large = 1;
    EXPECT_TRUE(store(2147483647.0, large));
    EXPECT_FALSE(store(2147483647.5, large));
    EXPECT_EQ(large, 2147483647);
}

TEST(Numbers, strKeepsThePlaceOfTheSign)
{
    EXPECT_EQ(str(5), L" 5");
    EXPECT_EQ(str(0), L" 0");
    EXPECT_EQ(str(-5), L"-5");
    EXPECT_EQ(digits(std::numeric_limits<std::int64_t>::min()), L"-9223372036854775808");
}

TEST(Format, eachFormatByWhatItIsFor)
{
    const std::chrono::local_days september9(std::chrono::year(2001) / 9 / 9);
    const struct {
        const char* what;
        std::wstring got;
        const wchar_t* wanted;
    } cases[] = {
        {"two digits", twoDigits(7), L"07"},
        {"two digits, more", twoDigits(100), L"100"},
        {"two digits, none", twoDigits(0), L"00"},
        {"last two", lastTwoDigits(107), L"07"},
        {"last two, one", lastTwoDigits(7), L"07"},
        {"one decimal", oneDecimal(1019), L"101.9"},
        {"one decimal below one", oneDecimal(5), L".5"},
        {"one decimal, nothing", oneDecimal(0), L".0"},
        {"grouped", grouped(1411200), L"1,411,200"},
        {"grouped short", grouped(999), L"999"},
        {"grouped four", grouped(1000), L"1,000"},
        {"grouped none", grouped(0), L""},
        {"grouped with a digit", groupedDigits(0), L"0"},
        {"grouped negative", grouped(-123456), L"-123,456"},
        {"minutes", hoursMinutesSeconds(205), L"03:25"},
        {"no time", hoursMinutesSeconds(0), L"00:00"},
        {"just under an hour", hoursMinutesSeconds(3599), L"59:59"},
        {"hours", hoursMinutesSeconds(3805), L"01:03:25"},
        {"date", dayMonthYear(std::chrono::year(2001) / 9 / 8), L"08-Sep-2001"},
        {"date at the year's end", dayMonthYear(std::chrono::year(2026) / 12 / 31), L"31-Dec-2026"},
        {"afternoon", dateAndTime(september9 + std::chrono::minutes(15 * 60 + 5)), L"Sep-9-2001 3:05pm"},
        {"midnight", dateAndTime(september9), L"Sep-9-2001 12:00am"},
        {"noon", dateAndTime(september9 + std::chrono::minutes(12 * 60)), L"Sep-9-2001 12:00pm"},
        {"late in the morning", dateAndTime(september9 + std::chrono::seconds(43199)), L"Sep-9-2001 11:59am"},
        {"before 1970", dateAndTime(std::chrono::local_seconds(std::chrono::seconds(-1))), L"Dec-31-1969 11:59pm"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.got, c.wanted) << c.what;
}

}
