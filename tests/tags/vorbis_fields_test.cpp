#include "tags/vorbis_fields.h"

#include "tags/vorbis_tag.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay;
using namespace std::string_literals;

TEST(VorbisFields, areShownTrimmed)
{
    tags::VorbisTag tag{.Title = L" Ab ",
                        .Artist = L"Ann",
                        .Album = L"   ",
                        .Genre = L"Rock ",
                        .Date = L"1999",
                        .Comment = L" Hi",
                        .TrackNumber = 12,
                        .EncodedUsing = L"not shown"};
    // The comments file has them in the order and with the names that tell each from the others.
    EXPECT_EQ(tags::commentsFileText(tags::shownFields(tag)),
              L"title=Ab\r\nartist=Ann\r\nalbum=\r\ngenre=Rock\r\ndate=1999\r\ntracknumber=12\r\ncomment=Hi\r\n");
    for (const std::int16_t none : {std::int16_t{0}, std::int16_t{-1}}) {
        tag.TrackNumber = none;
        EXPECT_EQ(tags::shownFields(tag).track, L"");
    }
}

TEST(VorbisFields, areWrittenOneALineWhateverStandsInThem)
{
    EXPECT_EQ(tags::commentsFileText({.title = L"  a\r\nartist=b\n", .track = L" 3 ", .comment = L"c\0d=\r"s}),
              L"title=a  artist=b\r\nartist=\r\nalbum=\r\ngenre=\r\ndate=\r\ntracknumber=3\r\ncomment=c d=\r\n");
}

TEST(VorbisFields, areWrittenByACommandThatNamesBothFiles)
{
    const struct {
        std::wstring file;
        std::wstring named;
    } cases[] = {
        {L" C:\\a b.ogg ", L"\"C:\\a b.ogg\""},
        {L"C:\\12\" mix.ogg", L"\"C:\\12\\\" mix.ogg\""},
        {L"C:\\\"x\".ogg", L"\"C:\\\\\\\"x\\\".ogg\""},
        {L"C:\\-c.ogg", L"\"C:\\-c.ogg\""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tags::vorbisCommentCommand(L"C:\\CDTONQUAY\\oggtools\\comments.txt", c.file),
                  L"vorbiscomment.exe  -w -c \"C:\\CDTONQUAY\\oggtools\\comments.txt\" " + c.named);
}

TEST(VorbisFields, areHeadedBySizeDateAndType)
{
    EXPECT_EQ(tags::oggInformation(4711, L"Sep-9-2001 1:46am"),
              L"Size: 4711 bytes,  Date: Sep-9-2001 1:46am\r\nType: Ogg Vorbis\r\n");
    EXPECT_EQ(tags::oggInformation(0, L"Sep-9-2001 1:46am"), L"Corrupt file");
}

}
