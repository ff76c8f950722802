#include "tags/genres.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using namespace tonquay::tags;

TEST(Genres, namesFollowNumbersAsText)
{
    const struct {
        const char* what;
        std::wstring number;
        std::wstring_view name;
    } cases[] = {
        {"first", L"0", L"Blues"},
        {"blank before", L" 17", L"Rock"},
        {"last of the old standard", L"79", L"Hard Rock"},
        {"84 as looked up", L"84", L"Fast Fusion"},
        {"last", L"147", L"Synth Pop"},
        {"past the end", L"148", L""},
        {"none", L"255", L""},
        {"negative", L"-1", L""},
        {"more than the number can hold", L"70000", L""},
        {"far more", L"1e300", L""},
        {"empty", L"", L""},
        {"blanks", L"   ", L""},
        {"no number counts as 0", L"Rock", L"Blues"},
        {"what follows it does not count", L"17)Rock", L"Rock"},
        {"halves go to the even number", L"16.5", L"Reggae"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GenreNameFromNumber(c.number), c.name) << c.what;
}

TEST(Genres, everyNameFindsItsNumberAndOnlyAsItIsSpelled)
{
    std::set<std::wstring> names;
    for (std::int16_t number = 0; number < static_cast<std::int16_t>(genreCount); ++number) {
        const std::wstring name = GenreNameFromNumber(std::to_wstring(number));
        EXPECT_EQ(GenreNumberFromName(name), number);
        EXPECT_TRUE(isGenreName(name));
        names.insert(name);
    }
    EXPECT_EQ(names.size(), genreCount) << "no name twice";
    for (const wchar_t* other : {L"rock", L"blues", L" Rock", L"Rock ", L"Psychedelic", L""}) {
        EXPECT_EQ(GenreNumberFromName(other), 0);
        EXPECT_FALSE(isGenreName(other)) << ::testing::PrintToString(other);
    }
}

/// What is saved when a user picks a row of the shown list.
TEST(Genres, theShownListDiffersInFiveRows)
{
    const std::map<std::size_t, std::pair<std::wstring_view, std::int16_t>> different = {
        {84, {L"Fast-Fusion", 0}}, {87, {L"Celtic", 88}},     {88, {L"Revival", 87}},
        {89, {L"Blue Grass", 0}},  {90, {L"Avantegarde", 0}},
    };
    for (std::size_t row = 0; row < genreCount; ++row) {
        const auto found = different.find(row);
        const auto saved = found == different.end() ? static_cast<std::int16_t>(row) : found->second.second;
        EXPECT_EQ(GenreNumberFromName(shownGenre(row)), saved) << row;
        if (found != different.end()) {
            EXPECT_EQ(shownGenre(row), found->second.first);
        }
    }
    EXPECT_EQ(shownGenre(genreCount), L"");
}

}
