#include "support/fake_host.h"
#include "tagging/file_search.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::tagging {
namespace {

using testing::ElementsAre;

state::DiscInfo discOf(std::wstring artist, std::wstring album)
{
    state::DiscInfo disc;
    disc.discArtist = std::move(artist);
    disc.discAlbum = std::move(album);
    disc.trackTitles.set(3, L"Dawn");
    disc.trackTitles.set(4, L"..\\..\\Noon");
    disc.trackTitles.set(5, L"What?");
    return disc;
}

TEST(CandidateNames, areTriedInTheirOrder)
{
    EXPECT_THAT(candidateNames(discOf(L"Ann", L"Light"), 3),
                ElementsAre(L"Track3", L"Dawn", L"Track3", L"Ann 3", L"Light 3", L"Ann - Light 3", L"Ann - Dawn",
                            L"03 - Dawn"));
    EXPECT_THAT(candidateNames(discOf(L"", L""), 12),
                ElementsAre(L"Track12", L"", L"Track12", L" 12", L" 12", L" -  12", L" - ", L"12 - "));
}

TEST(TagFolder, isTheInnermostThatIsThere)
{
    struct Case {
        const char* what;
        const wchar_t* artist;
        const wchar_t* album;
        const wchar_t* output;
        const wchar_t* folder;
    };
    const Case cases[] = {
        {"album", L"Ann", L"Light", L"C:\\m", L"C:\\m\\Ann\\Light"},
        {"in any case", L"aNN", L"lIGHT", L"C:\\m", L"C:\\m\\aNN\\lIGHT"},
        {"with blanks about", L" Ann ", L" Light ", L"C:\\m", L"C:\\m\\Ann\\Light"},
        {"no folder of the album", L"Ann", L"Dark", L"C:\\m", L"C:\\m\\Ann"},
        {"no album", L"Ann", L" ", L"C:\\m", L"C:\\m\\Ann"},
        {"no folder of the artist", L"Bob", L"Light", L"C:\\m", L"C:\\m"},
        {"no artist", L"  ", L"Top", L"C:\\m", L"C:\\m"},
        {"the artist is a file", L"File", L"Light", L"C:\\m", L"C:\\m"},
        {"a drive root of two characters", L"Ann", L"Root", L"C:", L"C:\\Ann\\Root"},
        {"and of three", L"Ann", L"Root", L"C:\\", L"C:\\Ann\\Root"},
        {"an artist that no folder is called", L"m/Ann", L"Light", L"C:", L"C:"},
        {"an album that no folder is called", L"Ann", L"..\\Top", L"C:\\m", L"C:\\m\\Ann"},
    };
    test::FakeHost host;
    host.files.putFolder(L"C:\\m\\Ann\\Light");
    host.files.putFolder(L"C:\\m\\Top");
    host.files.putFolder(L"C:\\Ann\\Root");
    host.files.put(L"C:\\m\\File", "");
    for (const Case& c : cases)
        EXPECT_EQ(tagFolder(host.files, c.output, discOf(c.artist, c.album)), c.folder) << c.what;
}

TEST(FindTrackFile, takesTheFirstNameThatIsAFile)
{
    struct Case {
        const char* what;
        std::vector<const wchar_t*> files;
        int track;
        std::optional<std::wstring> found;
    };
    const Case cases[] = {
        {"nothing there", {}, 3, std::nullopt},
        {"number before title", {L"Dawn.MP3", L"Track3.MP3"}, 3, L"C:\\m\\Track3.MP3"},
        {"title before artist", {L"Ann 3.MP3", L"Dawn.MP3"}, 3, L"C:\\m\\Dawn.MP3"},
        {"artist before album", {L"Light 3.MP3", L"Ann 3.MP3"}, 3, L"C:\\m\\Ann 3.MP3"},
        {"album before both", {L"Ann - Light 3.MP3", L"Light 3.MP3"}, 3, L"C:\\m\\Light 3.MP3"},
        {"both before artist and title", {L"Ann - Dawn.MP3", L"Ann - Light 3.MP3"}, 3, L"C:\\m\\Ann - Light 3.MP3"},
        {"artist and title before number", {L"03 - Dawn.MP3", L"Ann - Dawn.MP3"}, 3, L"C:\\m\\Ann - Dawn.MP3"},
        {"number and title", {L"03 - Dawn.MP3"}, 3, L"C:\\m\\03 - Dawn.MP3"},
        {"in any case", {L"dAWN.mp3"}, 3, L"C:\\m\\Dawn.MP3"},
        {"another track's, another kind", {L"Track4.MP3", L"Track3.ogg", L"3 - Dawn.MP3"}, 3, std::nullopt},
        {"a folder of that name", {L"Track3.MP3\\x", L"Dawn.MP3"}, 3, L"C:\\m\\Dawn.MP3"},
        {"a title that leads elsewhere", {L"..\\Noon.MP3", L"..\\..\\Noon.MP3"}, 4, std::nullopt},
        {"a title that no file is called", {L"What?.MP3"}, 5, std::nullopt},
    };
    for (const Case& c : cases) {
        test::FakeHost host;
        host.files.putFolder(L"C:\\m");
        for (const wchar_t* name : c.files)
            host.files.put(std::wstring(L"C:\\m\\") + name, "sound");
        EXPECT_EQ(findTrackFile(host.files, L"C:\\m", discOf(L"Ann", L"Light"), c.track), c.found) << c.what;
    }
}

}
}
