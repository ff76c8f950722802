#include "tags/convert_base.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay;

TEST(ConvertBase, writesANumberInAnotherBase)
{
    const struct {
        std::wstring number;
        std::int16_t from;
        std::int16_t to;
        std::wstring result;
    } cases[] = {
        {L"0", 10, 16, L"0"},
        {L"000", 10, 2, L"0"},
        {L"17", 10, 16, L"11"},
        {L"68", 10, 16, L"44"},
        {L"128", 10, 16, L"80"},
        {L"255", 10, 16, L"FF"},
        {L"ff", 16, 10, L"255"},
        {L"1000", 10, 36, L"RS"},
        {L"zz", 36, 10, L"1295"},
        {L"101", 2, 8, L"5"},
        {L"9007199254740991", 10, 16, L"1FFFFFFFFFFFFF"},
        {L"", 10, 16, L""},
        {L"1", 1, 16, L""},
        {L"1", 37, 16, L""},
        {L"1", 10, 1, L""},
        {L"1", 10, 37, L""},
        {L"1", -2, 10, L""},
        {L"12", 2, 10, L""},
        {L"A", 10, 16, L""},
        {L"1.5", 10, 16, L"Error"},
        {L"-1", 10, 16, L"Error"},
        {L" 1", 10, 16, L"Error"},
        {L"@", 36, 10, L"Error"},
        {L"[", 36, 10, L"Error"},
        {L"5?", 2, 10, L""},
        {L"?5", 2, 10, L"Error"},
        {std::wstring(2000, L'Z'), 36, 2, L""},
        {std::wstring(2000, L'0') + L"9", 10, 2, L"1001"},
        {L"1" + std::wstring(1023, L'0'), 2, 2, L"1" + std::wstring(1023, L'0')},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tags::ConvertBase(c.number, c.from, c.to), c.result)
            << ::testing::PrintToString(c.number) << " from " << c.from << " to " << c.to;
}

TEST(ConvertBase, restsOnARemainderOfFloatingPointNumbers)
{
    EXPECT_EQ(tags::FloatMod(68, 16), 4);
    EXPECT_EQ(tags::FloatMod(5.5, 2), 1.5);
    EXPECT_EQ(tags::FloatMod(4294967296.0 * 4096 + 5, 16), 5) << "past 32 bits";
    EXPECT_EQ(tags::FloatMod(3, 0), 0);
}

}
