#include "disc/handover_writer.h"

#include "base/sequential.h"
#include "base/text.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

namespace tonquay::disc {
namespace {

/// The fields as the program that is started takes them, mapping undone.
struct Taken {
    std::wstring artist;
    std::wstring album;
    std::int16_t count = -1;
    std::array<std::wstring, 100> titles;
    std::wstring comment;
    std::wstring genre;
    std::wstring year;
    std::wstring drive;
    bool complete = false;
};

std::wstring unmapped(std::wstring_view text)
{
    return base::replaced(base::replaced(base::trim(text), L'`', L'\''), L'~', L',');
}

Taken take(const HandOver& handOver)
{
    EXPECT_TRUE(base::isUtf8(handOver.bytes));
    const std::wstring text = base::fromFileBytes(handOver.bytes);
    base::SequentialReader reader(text);
    Taken taken;
    const auto field = [&reader](std::wstring& into) {
        into = L"(missing)";
        reader.read(into);
        into = unmapped(into);
    };
    field(taken.artist);
    field(taken.album);
    reader.read(taken.count);
    for (std::wstring& title : taken.titles)
        field(title);
    field(taken.comment);
    field(taken.genre);
    field(taken.year);
    field(taken.drive);
    taken.complete = reader.atEnd();
    return taken;
}

platform::DiscTable discOf(std::size_t tracks, platform::DiscNames names = {}, std::string id = "AbC.1_2-")
{
    platform::DiscTable table;
    for (std::size_t i = 0; i < tracks; ++i)
        table.tracks.push_back({.number = static_cast<int>(i) + 1,
                                .firstSector = static_cast<int>(i) * 1000,
                                .sectorCount = 1000,
                                .audio = true});
    table.names = std::move(names);
    table.discId = std::move(id);
    return table;
}

TEST(HandOverWriter, everyFieldArrivesAtItsPlace)
{
    const HandOver handOver = makeHandOver(discOf(3, {.artist = L"Ann",
                                                      .album = L"Quay",
                                                      .year = L"1999",
                                                      .genre = L"Rock",
                                                      .comment = L"A, b",
                                                      .titles = {L"One", L"Two", L"Three"}}),
                                           L'E');
    const Taken taken = take(handOver);
    EXPECT_EQ(taken.artist, L"Ann");
    EXPECT_EQ(taken.album, L"Quay");
    EXPECT_EQ(taken.count, 3);
    EXPECT_EQ(taken.titles[0], L"One");
    EXPECT_EQ(taken.titles[2], L"Three");
    EXPECT_EQ(taken.titles[3], L"");
    EXPECT_EQ(taken.titles[99], L"");
    EXPECT_EQ(taken.comment, L"A, b");
    EXPECT_EQ(taken.genre, L"Rock");
    EXPECT_EQ(taken.year, L"1999");
    EXPECT_EQ(taken.drive, L"E");
    EXPECT_TRUE(taken.complete);
    EXPECT_TRUE(handOver.changes.empty());
}

TEST(HandOverWriter, namesOfEveryKindArriveOrAreMadeHarmless)
{
    const struct {
        const char* what;
        std::wstring name;
        std::wstring arrives;
    } cases[] = {
        {"apostrophe and comma", L"It's now, or never", L"It's now, or never"},
        {"backquote of its own", L"Rock `n` Roll", L"Rock 'n' Roll"},
        {"tilde of its own", L"Live ~ Again", L"Live - Again"},
        {"double quotes", L"\"Heroes\"", L"'Heroes'"},
        {"slashes are left to the naming", L"AC/DC \\ live", L"AC/DC \\ live"},
        {"control characters",
         L"a\tb\r\nc\x1b[31m\x7f\x85"
         L"d",
         L"abc[31md"},
        {"direction marks and line separators",
         L"a\x202E"
         L"b\x2028"
         L"c\x2066"
         L"d",
         L"abcd"},
        {"NUL inside", std::wstring(L"a\0b", 3), L"ab"},
        {"Cyrillic", L"Группа крови", L"Группа крови"},
        {"Japanese", L"千と千尋", L"千と千尋"},
        {"emoji with a joiner", L"\U0001F469\x200D\U0001F680", L"\U0001F469\x200D\U0001F680"},
        {"byte that was no UTF-8", L"Caf\xDCE9", L"Caf"},
        {"lone surrogate, past Unicode", L"x\xD800y\x7FFFFFFF", L"xy"},
        {"blanks at the ends", L"  two  words ", L"two  words"},
        {"dots within a name", L"R.E.M.", L"R.E.M."},
    };
    for (const auto& c : cases) {
        const Taken taken = take(makeHandOver(discOf(1, {.artist = c.name,
                                                         .album = c.name,
                                                         .year = c.name,
                                                         .genre = c.name,
                                                         .comment = c.name,
                                                         .titles = {c.name}}),
                                              L'D'));
        for (const std::wstring* field :
             {&taken.artist, &taken.album, &taken.titles[0], &taken.comment, &taken.genre, &taken.year})
            EXPECT_EQ(*field, c.arrives) << c.what;
        EXPECT_TRUE(taken.complete) << c.what;
    }
}

TEST(HandOverWriter, namesThatWouldLeaveTheOutputFolderAreDropped)
{
    const std::wstring dotsBeforeTheCut = L".." + std::wstring(300, L' ') + L"x";
    const std::wstring slashesBeforeTheCut = L"../" + std::wstring(300, L'/') + L"x";
    const std::wstring names[] = {L".",
                                  L"..",
                                  L"...",
                                  L" .. ",
                                  L"../",
                                  L"..\\",
                                  L"/..",
                                  L"?.:.*",
                                  L".\x01.",
                                  L". .",
                                  L".<.>.",
                                  dotsBeforeTheCut,
                                  slashesBeforeTheCut};
    for (const std::wstring& name : names) {
        const HandOver handOver = makeHandOver(
            discOf(2,
                   {.artist = name, .album = L"Quay", .year = {}, .genre = {}, .comment = {}, .titles = {L"A", name}}),
            L'D');
        const Taken taken = take(handOver);
        EXPECT_EQ(taken.artist, L"Unknown Artist") << base::utf8(name);
        EXPECT_EQ(taken.titles[1], L"Track 02") << base::utf8(name);
        EXPECT_THAT(handOver.changes, testing::Contains(testing::HasSubstr("Unknown Artist"))) << base::utf8(name);
    }
}

/// What the reader does next: a disc whose first and last titles are empty counts as unknown.
bool readerOverwrites(const Taken& taken)
{
    return taken.count == 0 ||
           (base::isBlank(taken.titles[0]) && base::isBlank(taken.titles[static_cast<std::size_t>(taken.count) - 1]));
}

TEST(HandOverWriter, missingNamesAreFilledSoThatTheKnownOnesSurvive)
{
    const struct {
        const char* what;
        platform::DiscNames names;
        std::string id;
        std::wstring artist;
        std::wstring album;
        std::vector<std::wstring> titles;
    } cases[] = {
        {"only the middle title",
         {.artist = L"A", .album = L"B", .year = {}, .genre = {}, .comment = {}, .titles = {L"", L"Mid"}},
         "id",
         L"A",
         L"B",
         {L"Track 01", L"Mid", L"Track 03"}},
        {"artist alone",
         {.artist = L"A", .album = {}, .year = {}, .genre = {}, .comment = {}, .titles = {}},
         "id",
         L"A",
         L"Unknown Title (id)",
         {L"Track 01", L"Track 02", L"Track 03"}},
        {"album alone",
         {.artist = {}, .album = L"B", .year = {}, .genre = {}, .comment = {}, .titles = {}},
         "id",
         L"Unknown Artist",
         L"B",
         {L"Track 01", L"Track 02", L"Track 03"}},
        {"names of which no file name keeps anything",
         {.artist = L"?", .album = L"???", .year = {}, .genre = {}, .comment = {}, .titles = {L"*", L"b", L"c"}},
         "id",
         L"Unknown Artist",
         L"Unknown Title (id)",
         {L"*", L"b", L"c"}},
        {"nothing",
         {},
         "Wn8.x_-",
         L"Unknown Artist",
         L"Unknown Title (Wn8.x_-)",
         {L"Track 01", L"Track 02", L"Track 03"}},
        {"nothing, not even an identifier",
         {},
         "",
         L"Unknown Artist",
         L"Unknown Title",
         {L"Track 01", L"Track 02", L"Track 03"}},
        {"titles alone",
         {.artist = L" ", .album = L"..", .year = {}, .genre = {}, .comment = {}, .titles = {L"", L"Two", L"Three"}},
         "x",
         L"Unknown Artist",
         L"Unknown Title (x)",
         {L"Track 01", L"Two", L"Three"}},
    };
    for (const auto& c : cases) {
        const Taken taken = take(makeHandOver(discOf(3, c.names, c.id), L'D'));
        EXPECT_EQ(taken.artist, c.artist) << c.what;
        EXPECT_EQ(taken.album, c.album) << c.what;
        EXPECT_EQ(std::vector(taken.titles.begin(), taken.titles.begin() + 3), c.titles) << c.what;
        EXPECT_FALSE(readerOverwrites(taken)) << c.what;
    }
}

TEST(HandOverWriter, aHundredTitlesAreTheMost)
{
    for (const std::size_t tracks : {99u, 100u, 101u, 5000u}) {
        const Taken taken = take(makeHandOver(discOf(tracks, {.artist = L"A",
                                                              .album = {},
                                                              .year = {},
                                                              .genre = {},
                                                              .comment = {},
                                                              .titles = std::vector<std::wstring>(tracks, L"t")}),
                                              L'D'));
        EXPECT_EQ(taken.count, static_cast<int>(std::min<std::size_t>(tracks, 100)));
        EXPECT_EQ(std::count(taken.titles.begin(), taken.titles.end(), L"t"), taken.count);
        EXPECT_TRUE(taken.complete);
    }
}

TEST(HandOverWriter, everyFileNameMadeOfTheNamesFitsTheFileSystem)
{
    const auto bytes = [](const std::wstring& name) { return base::utf8(name).size(); };
    const struct {
        const char* what;
        std::wstring artist;
        std::wstring album;
        std::wstring title;
        bool whole; ///< nothing may be lost
    } cases[] = {
        {"300 letters each", std::wstring(300, L'a'), std::wstring(300, L'b'), std::wstring(300, L'c'), false},
        {"300 Japanese each", std::wstring(300, L'千'), std::wstring(300, L'千'), std::wstring(300, L'千'), false},
        {"300 emoji for a title", L"A", L"B", std::wstring(300, L'\U0001F680'), false},
        {"long artist beside short names", std::wstring(230, L'a'), L"B", L"C", true},
        {"long title beside a short artist", L"A", L"B", std::wstring(238, L'c'), true},
        {"a megabyte", std::wstring(1 << 20, L'x'), std::wstring(1 << 20, L'.'), std::wstring(1 << 20, L'\t'), false},
    };
    for (const auto& c : cases) {
        const HandOver handOver = makeHandOver(discOf(2, {.artist = c.artist,
                                                          .album = c.album,
                                                          .year = {},
                                                          .genre = {},
                                                          .comment = c.title,
                                                          .titles = {c.title, L"Short"}}),
                                               L'D');
        const Taken taken = take(handOver);
        EXPECT_LE(bytes(taken.artist + L" - " + taken.titles[0] + L".wav"), 255u) << c.what;
        EXPECT_LE(bytes(taken.artist + L" - " + taken.album + L" 99.wav"), 255u) << c.what;
        EXPECT_FALSE(taken.artist.empty()) << c.what;
        EXPECT_FALSE(taken.titles[0].empty()) << c.what;
        EXPECT_EQ(taken.titles[1], L"Short") << c.what;
        EXPECT_EQ(c.whole, taken.artist == c.artist && taken.album == c.album && taken.titles[0] == c.title) << c.what;
        EXPECT_EQ(c.whole, handOver.changes.empty()) << c.what;
        for (const std::string& line : handOver.changes) {
            EXPECT_LT(line.size(), 600u) << c.what;
            EXPECT_TRUE(base::isUtf8(line)) << c.what;
        }
    }
}

}
}
