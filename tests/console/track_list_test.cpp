#include "console/track_list.h"

#include "console/given_names.h"

#include <gmock/gmock.h>

#include <optional>

namespace tonquay::console {
namespace {

std::vector<platform::DiscTrack> tracks(std::initializer_list<int> numbers, int dataTrack = 0)
{
    std::vector<platform::DiscTrack> table;
    for (const int number : numbers)
        table.push_back({.number = number, .firstSector = 0, .sectorCount = 750, .audio = number != dataTrack});
    return table;
}

TEST(TrackList, textsThatAreNoListAreRefused)
{
    for (const char* text : {"", ",", "1,", ",1", "0", "100", "-", "-3", "3-1", "1--2", "1-2-3", "a", "1 2", " 1",
                             "1;2", "+1", "99999999999", "1-0", "1.5"})
        EXPECT_FALSE(TrackList::parse(text)) << text;
}

TEST(TrackList, placesInTheTable)
{
    const std::vector<platform::DiscTrack> plain = tracks({1, 2, 3, 4, 5, 6});
    const struct {
        const char* what;
        const char* text;
        std::vector<platform::DiscTrack> disc;
        std::vector<std::size_t> places;
        const char* failure;
    } cases[] = {
        {"mixed", "1,3-5", plain, {0, 2, 3, 4}, ""},
        {"open end", "5-", plain, {4, 5}, ""},
        {"open end at the last", "6-", plain, {5}, ""},
        {"twice and out of order", "4,1,1-2,4", plain, {0, 1, 3}, ""},
        {"past the end", "7", plain, {}, "track 7 is not there; the disc has tracks 1 to 6"},
        {"end past the end", "5-9", plain, {}, "track 7 is not there"},
        {"open end that starts past the end", "8-", plain, {}, "track 8 is not there"},
        {"a disc that begins at 5", "5,7", tracks({5, 6, 7}), {0, 2}, ""},
        {"before such a disc", "1", tracks({5, 6, 7}), {}, "the disc has tracks 5 to 7"},
        {"a data track", "1-2", tracks({1, 2, 3}, 1), {}, "track 1 is a data track"},
        {"round a data track", "2-", tracks({1, 2, 3}, 1), {1, 2}, ""},
        {"no disc at all", "1", {}, {}, "no tracks"},
    };
    for (const auto& c : cases) {
        const base::Result<TrackList> list = TrackList::parse(c.text);
        ASSERT_TRUE(list) << c.what;
        const base::Result<std::vector<std::size_t>> places = list->on(c.disc);
        ASSERT_EQ(static_cast<bool>(places), *c.failure == '\0') << c.what;
        if (places)
            EXPECT_EQ(*places, c.places) << c.what;
        else
            EXPECT_THAT(places.failure().text, testing::HasSubstr(c.failure)) << c.what;
    }
}

TEST(TrackList, withoutAListAllAudioTracksAreMeant)
{
    const auto places = allAudioTracks(tracks({1, 2, 3}, 1));
    ASSERT_TRUE(places);
    EXPECT_EQ(*places, (std::vector<std::size_t>{1, 2}));
    EXPECT_FALSE(allAudioTracks(tracks({1}, 1)));
    EXPECT_FALSE(allAudioTracks({}));
}

TEST(GivenNames, standInPlaceOfTheDiscs)
{
    platform::DiscTable table;
    table.tracks = tracks({5, 6});
    table.names = {.artist = L"A", .album = L"B", .year = L"1999", .genre = L"G", .comment = L"C", .titles = {L"T"}};
    GivenNames given;
    given.artist = L"New";
    given.year = L"";
    given.titles = {{6, L"Six"}};
    const auto names = withGivenNames(table, given);
    ASSERT_TRUE(names);
    EXPECT_EQ(names->artist, L"New");
    EXPECT_EQ(names->album, L"B");
    EXPECT_EQ(names->year, L"");
    EXPECT_EQ(names->titles, (std::vector<std::wstring>{L"T", L"Six"}));

    given.titles = {{1, L"One"}};
    EXPECT_FALSE(withGivenNames(table, given));
}

}
}
