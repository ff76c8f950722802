#include "tagging/tag_values.h"
#include "tags/genres.h"

#include <gtest/gtest.h>

namespace tonquay::tagging {
namespace {

TEST(GenreForCategory, goesByTheFirstFourLettersThenByTheName)
{
    struct Case {
        const wchar_t* category;
        const wchar_t* genre;
    };
    const Case cases[] = {
        {L"Blues", L"R&B"},
        {L"bluegrass", L"R&B"},
        {L"CLASSICAL", L"Classical"},
        {L"Classic Rock", L"Classic Rock"},
        {L"Classical rock ", L"Classic Rock"},
        {L"Country", L"Country"},
        {L"folk", L"Pop-Folk"},
        {L"Hard Rock", L"Hard Rock"},
        {L"jazz", L"Jazz"},
        {L"newage", L"New Age"},
        {L"New Age", L"New Age"},
        {L" reggae", L"Reggae"},
        {L"Rock & Roll", L"Rock"},
        {L"soundtrack", L"Soundtrack"},
        // Not by letters: only as the list spells it.
        {L"Trip-Hop", L"Trip-Hop"},
        {L"trip-hop", L""},
        {L"Avantegarde", L"Avantegarde"},
        {L"Avantgarde", L""},
        {L"A Rock", L""},
        {L"roc", L""},
        {L"misc", L""},
        {L"", L""},
        {L"Ночь", L""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(genreForCategory(c.category), c.genre) << c.category;
}

TEST(GenreForCategory, givesOnlyGenresThatTheListHas)
{
    controls::ComboBox list;
    FillGenreList(list);
    ASSERT_EQ(list.rowCount(), 148);
    EXPECT_EQ(list.row(84).text, L"Fast-Fusion") << "the list to choose from, not the one to look up in";
    for (const wchar_t* category :
         {L"BLUE", L"CLAS", L"CLAS ROCK", L"COUN", L"FOLK", L"HARD", L"JAZZ", L"NEWA", L"REGG", L"ROCK", L"SOUN"}) {
        bool listed = false;
        for (std::int32_t row = 0; row < list.rowCount(); ++row)
            listed = listed || list.row(row).text == genreForCategory(category);
        EXPECT_TRUE(listed) << category;
    }
}

TEST(FillTagInfo, fitsEachValueIntoItsField)
{
    const std::wstring blanks26(26, L' ');
    tags::TagState tags;
    tags.TagInfo.fill(L"before");
    fillTagInfo(tags, {L"  Ann  ", std::wstring(31, L'x'), L"19991", L"", L"Rock"}, L" Dawn ", L"7");
    struct Case {
        const char* what;
        std::size_t slot;
        std::wstring value;
    };
    const Case cases[] = {
        {"artist", 7, L"Ann" + std::wstring(27, L' ')},
        {"title", 8, L"Dawn" + blanks26},
        {"album", 9, std::wstring(30, L'x')},
        {"comment", 10, std::wstring(30, L' ')},
        {"genre", 11, L"17"},
        {"year", 12, L"1999"},
        {"track", 4, L"7"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(tags.TagInfo[c.slot], c.value) << c.what;
    for (const std::size_t other : {0U, 1U, 2U, 3U, 5U, 6U, 13U, 14U, 19U})
        EXPECT_EQ(tags.TagInfo[other], L"before") << other;

    fillTagInfo(tags, {.year = L" 99", .genre = L"Blue Grass"}, L"", L"100");
    EXPECT_EQ(tags.TagInfo[12], L" 99 ") << "a year keeps its blanks";
    EXPECT_EQ(tags.TagInfo[11], L"0") << "a spelling that cannot be looked up";
    EXPECT_EQ(tags.TagInfo[4], L"100");
    fillTagInfo(tags, {}, L"", L"1");
    EXPECT_EQ(tags.TagInfo[11], L"0") << "no genre";
}

TEST(TagValues, ofADiscAreItsOwnNamesAndTheGenreItStandsFor)
{
    state::DiscInfo disc;
    disc.discArtist = L"Ann";
    disc.discAlbum = L"Light";
    disc.discYear = L"1999";
    disc.discGenre = L"blues";
    disc.discComment = L"live";
    const TagValues values = tagValuesOf(disc);
    EXPECT_EQ(values.artist + L"/" + values.album + L"/" + values.year + L"/" + values.comment + L"/" + values.genre,
              L"Ann/Light/1999/live/R&B");
}

}
}
