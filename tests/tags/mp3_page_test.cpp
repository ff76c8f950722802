#include "tags/mp3_page.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace tonquay;
using namespace tonquay::tags;

TagState with(const std::map<std::size_t, std::wstring>& slots)
{
    TagState state;
    for (const auto& [place, text] : slots)
        state.TagInfo[place] = text;
    return state;
}

TEST(Mp3Page, theFieldsComeFromTheirSlots)
{
    const TagFields fields = tagFields(with({{slot::artist, L"Ann "},
                                             {slot::title, L"T"},
                                             {slot::album, L"A"},
                                             {slot::year, L"99"},
                                             {slot::genre, L"17"},
                                             {slot::genreName, L"Jazz"},
                                             {slot::comment, L"c"},
                                             {slot::track, L"5/12"}}));
    EXPECT_EQ(fields.artist, L"Ann ");
    EXPECT_EQ(fields.title, L"T");
    EXPECT_EQ(fields.album, L"A");
    EXPECT_EQ(fields.year, L"99");
    EXPECT_EQ(fields.genre, L"Rock");
    EXPECT_EQ(fields.comment, L"c");
    EXPECT_EQ(fields.track, L"5/12");
    for (const wchar_t* none : {L"", L"0", L"-1", L"x"}) {
        const TagFields few = tagFields(with({{slot::year, L"9"}, {slot::genre, L""}, {slot::track, none}}));
        EXPECT_EQ(few.year + few.genre + few.track, L"") << ::testing::PrintToString(none);
    }
}

TEST(Mp3Page, theInformationTellsWhatIsKnown)
{
    const std::wstring head = L"Size: 400 bytes,  Date: now\r\nType: MPEG 1.0 Layer 3\r\n";
    const struct {
        const char* what;
        std::map<std::size_t, std::wstring> slots;
        std::wstring tail;
    } cases[] = {
        {"nothing", {}, L""},
        {"blanks", {{slot::sampleRate, L" "}, {slot::channels, L" "}, {slot::vbr, L" "}, {slot::title, L" "}}, L""},
        {"all of it",
         {{slot::sampleRate, L"44"},
          {slot::playSeconds, L"200"},
          {slot::vbr, L"No"},
          {slot::channels, L"Joint Stereo"},
          {slot::bitrate, L"128"},
          {slot::id3v2, L"2"}},
         L"Bitrate: 128 Kbps,  Frequency: 44 KHz\r\nChannel Info: Joint Stereo,  VBR Encoding:  No\r\n"
         L"ID3v1 Tag Present, ID3v2 Tag Present\r\nTrack Time: 3:20\r\n"},
        {"bitrate of 0", {{slot::bitrate, L"0"}}, L"ID3v1 Tag Present\r\n"},
        {"title", {{slot::title, L"T"}}, L"ID3v1 Tag Present\r\n"},
        {"artist, with ID3v2",
         {{slot::artist, L"A"}, {slot::id3v2, L"2"}},
         L"ID3v1 Tag Present, ID3v2 Tag Present\r\n"},
        {"album only", {{slot::album, L"A"}, {slot::id3v2, L"2"}}, L"ID3v2 Tag Present\r\n"},
        {"no time", {{slot::playSeconds, L"0"}}, L""},
        {"a second", {{slot::playSeconds, L"1"}}, L"Track Time: 0:01\r\n"},
        {"a minute", {{slot::playSeconds, L"60"}}, L"Track Time: 1:00\r\n"},
        {"rounded up to a minute", {{slot::playSeconds, L"59.5"}}, L"Track Time: 0:60\r\n"},
        {"many minutes", {{slot::playSeconds, L"2000000"}}, L"Track Time: 33333:20\r\n"},
        {"an unknown time", {{slot::playSeconds, L"-1"}}, L"Track Time: -1:59\r\n"},
        {"no time at all", {{slot::playSeconds, L"1e300"}}, L""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(fileInformation(with(c.slots), 400, L"now"), head + c.tail) << c.what;
    EXPECT_EQ(fileInformation({}, 0, L"now"), L"Date/Time: now\r\nType: MPEG 1.0 Layer 3\r\n");
}

}
