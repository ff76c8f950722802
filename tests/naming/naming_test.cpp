#include "naming/file_name.h"
#include "naming/nonasc.h"
#include "naming/output_folder.h"
#include "naming/prefix_move.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::naming {
namespace {

TEST(Nonasc, takesOutWhatNoFileNameMayHold)
{
    struct Case {
        const wchar_t* from;
        const wchar_t* to;
    };
    const Case cases[] = {
        {L"", L""},
        {L"AC/DC", L"ACDC"},
        {L" \\/?:*\"><| ", L""},
        {L"? What ? ", L"What"},
        {L"a\tb. ", L"a\tb."},
        {L"Ночь | 夜", L"Ночь  夜"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(nonasc(c.from), c.to) << c.from;
}

TEST(PrefixMove, putsArticlesAtTheEndOfThirtyCharacters)
{
    struct Case {
        const char* what;
        std::wstring from;
        std::wstring moved; ///< without the blanks that fill it up
    };
    const Case cases[] = {
        {"no article", L"Ann Lee", L"Ann Lee"},
        {"the", L"The Beat", L"Beat, The"},
        {"in its own case", L"tHE Beat", L"Beat, tHE"},
        {"an", L"An Evening", L"Evening, An"},
        {"a", L"A Day  ", L"Day, A"},
        {"only at the start, only as a word", L"Theatre of A The", L"Theatre of A The"},
        {"each that comes to stand in front", L"A An The X", L"X, A, An, The"},
        {"but none twice, and never back", L"An A X", L"A X, An"},
        {"the rest keeps no blanks at its ends", L"The   Beat", L"Beat, The"},
        {"nothing but the article", L"A", L", A"},
        {"nothing at all", L"", L""},
        {"a blank before it", L" The Beat", L" The Beat"},
        {"what does not fit is gone", L"The " + std::wstring(26, L'x'), std::wstring(26, L'x') + L", Th"},
        {"too long before", std::wstring(31, L'x'), std::wstring(30, L'x')},
        {"beyond one byte a letter", L"The \u591C", L"\u591C, The"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(prefixMoved(c.from), fixedWidth(c.moved, 30)) << c.what;
}

TEST(FileName, followsTheFormatAndFallsBackToTheNumber)
{
    state::DiscInfo disc;
    disc.discArtist = L"Ann Lee";
    disc.discAlbum = L"First Light";
    disc.trackTitles.set(3, L" Dawn ");
    disc.trackTitles.set(4, L"X");
    state::DiscInfo nameless;

    struct Case {
        const char* what;
        const state::DiscInfo& disc;
        std::int16_t format;
        int number;
        std::size_t shortest;
        const wchar_t* name;
    };
    const Case cases[] = {
        {"title", disc, 0, 3, 2, L"Dawn"},
        {"number", disc, 1, 3, 2, L"Track3"},
        {"artist keeps the blank of the number", disc, 2, 3, 2, L"Ann Lee 3"},
        {"album", disc, 3, 12, 2, L"First Light 12"},
        {"artist and album", disc, 4, 3, 2, L"Ann Lee - First Light 3"},
        {"artist and title", disc, 5, 3, 2, L"Ann Lee - Dawn"},
        {"number and title", disc, 6, 3, 2, L"03 - Dawn"},
        {"only two digits of a hundred", disc, 6, 100, 2, L"00 - "},
        {"one character is too short to rip", disc, 0, 4, shortestRippedName, L"Track4"},
        {"and long enough to look for", disc, 0, 4, shortestRebuiltName, L"X"},
        {"no title", disc, 0, 5, shortestRebuiltName, L"Track5"},
        {"no artist, one digit", nameless, 2, 5, 2, L"Track5"},
        {"no artist, two digits keep the blank", nameless, 2, 15, 2, L" 15"},
        {"no such format", disc, 7, 3, 2, L"Track3"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(fileName(c.format, c.disc, c.number, c.shortest), c.name) << c.what;
}

TEST(OutputFolder, makesArtistAndAlbumFoldersOneByOne)
{
    struct Case {
        const char* what;
        std::int16_t dirMode;
        const wchar_t* artist;
        const wchar_t* album;
        const wchar_t* folder;
    };
    const Case cases[] = {
        {"none", 0, L"Ann", L"Light", L"C:\\Music"},
        {"artist", 1, L" Ann ", L"Light", L"C:\\Music\\Ann"},
        {"artist and album", 2, L"Ann", L"Light", L"C:\\Music\\Ann\\Light"},
        {"no album", 2, L"Ann", L" ", L"C:\\Music\\Ann"},
        {"an album without artist stays in the output folder", 2, L" ", L"Light", L"C:\\Music"},
    };
    for (const Case& c : cases) {
        test::FakeHost host;
        host.files.putFolder(L"C:\\Music");
        state::RipSettings settings;
        settings.outputFolder = L"C:\\Music";
        settings.dirMode = c.dirMode;
        state::DiscInfo disc;
        disc.discArtist = c.artist;
        disc.discAlbum = c.album;
        EXPECT_EQ(makeOutputFolder(host.files, host.log, settings, disc), c.folder) << c.what;
        EXPECT_TRUE(host.files.folderExists(c.folder)) << c.what;
    }
}

TEST(OutputFolder, driveRootTakesNoFurtherBackslash)
{
    EXPECT_EQ(joined(L"D:\\", L"a.wav"), L"D:\\a.wav");
    EXPECT_EQ(joined(L"D:", L"a.wav"), L"D:\\a.wav");
    EXPECT_EQ(joined(L"D:\\x", L"a.wav"), L"D:\\x\\a.wav");
}

}
}
