#include "id3v2_maker.h"
#include "tags/frame_ids.h"
#include "tags/id3v2_enums.h"
#include "tags/id3v2_frames.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace tonquay;
using namespace tonquay::tags;
using namespace std::string_literals;
using test::bytesOf;

TEST(Id3v2Sizes, areFourGroupsOfSevenBits)
{
    const struct {
        std::int32_t value;
        SizeBytes bytes;
    } cases[] = {
        {0, {}},
        {127, {std::byte{0}, std::byte{0}, std::byte{0}, std::byte{127}}},
        {200, {std::byte{0}, std::byte{0}, std::byte{1}, std::byte{0x48}}},
        {257, {std::byte{0}, std::byte{0}, std::byte{2}, std::byte{1}}},
        {0x0fffffff, {std::byte{127}, std::byte{127}, std::byte{127}, std::byte{127}}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(LongToByte(c.value), c.bytes) << c.value;
        EXPECT_EQ(ByteToLong(c.bytes), c.value);
    }
    EXPECT_EQ(LongToByte(0x10000000), SizeBytes{}) << "the 29th bit has no place";
    EXPECT_EQ(LongToByte(-1), (SizeBytes{std::byte{0}, std::byte{0}, std::byte{0}, std::byte{127}}));
    EXPECT_EQ(ByteToLong(SizeBytes{std::byte{0}, std::byte{0}, std::byte{1}, std::byte{0}}), 128);
    EXPECT_EQ(ByteToLong(SizeBytes{std::byte{0}, std::byte{0}, std::byte{0}, std::byte{255}}), 255);
    SizeBytes all;
    all.fill(std::byte{255});
    EXPECT_EQ(ByteToLong(all), 538984575);
}

TEST(Id3v2Sizes, aShiftMultipliesOrDividesAndFailsWhenItDoesNotFit)
{
    const auto left = ShiftDirection::left;
    const auto right = ShiftDirection::right;
    const struct {
        std::int32_t value;
        std::int16_t count;
        ShiftDirection direction;
        std::int32_t result;
    } cases[] = {
        {3, 7, left, 384},  {1, 30, left, 1 << 30},       {-1, 31, left, INT32_MIN},
        {0, 1000, left, 0}, {384, 7, right, 3},           {-7, 1, right, -3},
        {-1, 7, right, 0},  {INT32_MIN, 31, right, -1},   {5, 1000, right, 0},
        {5, 0, right, 5},   {5, 1, ShiftDirection{0}, 0}, {5, 1, ShiftDirection{3}, 0},
    };
    for (const auto& c : cases) {
        const auto result = Shift(c.value, c.count, c.direction);
        ASSERT_TRUE(result) << c.value << ", " << c.count;
        EXPECT_EQ(*result, c.result) << c.value << ", " << c.count;
    }
    for (const std::int16_t count : {std::int16_t{31}, std::int16_t{1000}, std::int16_t{INT16_MAX}}) {
        const auto result = Shift(1, count, left);
        ASSERT_FALSE(result) << count;
        EXPECT_EQ(result.failure().where, "Shift");
    }
}

TEST(Id3v2FrameIds, haveNumbersFromOneAndAreComparedAsTheyStand)
{
    const wchar_t* const served[] = {L"TRCK", L"TIT2", L"TPE1", L"TALB", L"TYER", L"TCON",
                                     L"COMM", L"TCOM", L"TOPE", L"TCOP", L"WXXX", L"TENC"};
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(GetFrameIDString(FrameValueID{i + 1}), served[i]);
    for (const int number : {INT32_MIN, -1, 0, 13, INT32_MAX})
        EXPECT_EQ(GetFrameIDString(FrameValueID{number}), L"");
    for (const wchar_t* other : {L"", L"tit2", L"TIT2 ", L"TIT", L"AENC", L"APIC", L"TPE2", L"WPUB"})
        EXPECT_EQ(GetFrameKind(other), FrameKind::notServed) << testing::PrintToString(other);
}

/// The body of a frame, which says its own size.
std::vector<std::byte> bodyOf(const clsFrame& frame)
{
    const auto bytes = frame.getBytes();
    EXPECT_TRUE(bytes);
    EXPECT_EQ(bytes ? bytes->size() : 0, static_cast<std::size_t>(frame.FrameSize()));
    return bytes ? *bytes : std::vector<std::byte>();
}

TEST(Id3v2Frames, whatIsSetBecomesTheBody)
{
    const struct {
        const char* what;
        std::wstring value;
        std::string data; ///< as it is stored
    } cases[] = {
        {"letters", L"Abc", "Abc\0"s},
        {"nothing", L"", "\0"s},
        {"ends in a NUL", L"Abc\0"s, "Abc\0"s},
        {"NULs inside", L"a\0\0b"s, "a\0\0b\0"s},
        {"only NULs", L"\0\0"s, "\0\0"s},
        {"umlauts and a gap of the code page", L"\u00C4\u20AC\u0081", "\xC4\x80\x81\0"s},
        {"no byte for it", L"\u0416\U0001F3B5", "??\0"s},
    };
    for (const auto& c : cases) {
        clsText_Frame text;
        clsWeb_Frame web;
        clsComment_Frame comment;
        for (clsFrame* frame : std::initializer_list<clsFrame*>{&text, &web, &comment})
            frame->Data(c.value);
        EXPECT_EQ(bodyOf(text), bytesOf("\0"s + c.data)) << c.what;
        EXPECT_EQ(bodyOf(web), bytesOf("\0\0"s + c.data)) << c.what;
        EXPECT_EQ(bodyOf(comment), bytesOf("\0\0\0\0\0"s + c.data)) << c.what;
        web.Description(c.value);
        comment.Description(c.value);
        EXPECT_EQ(bodyOf(web), bytesOf("\0"s + c.data + c.data)) << c.what;
        EXPECT_EQ(bodyOf(comment), bytesOf("\0\0\0\0"s + c.data + c.data)) << c.what;
    }
    EXPECT_EQ(bodyOf(clsText_Frame()), bytesOf("\0\0"s)) << "nothing was set";
    clsComment_Frame comment;
    comment.TextEncoding(1);
    for (const auto& [language, stored] : {std::pair(L"eng", "eng"), {L"d", "d  "}, {L"", "   "}, {L"engl", "eng"}}) {
        comment.Language(language);
        EXPECT_EQ(bodyOf(comment), bytesOf("\1"s + stored + "\0\0"s));
    }
}

TEST(Id3v2Frames, aBodyBecomesFieldsAndTheSameBodyAgain)
{
    std::string everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte.push_back(static_cast<char>(i));
    const struct {
        const char* what;
        FrameKind kind;
        std::string body;
        std::wstring description, data;
        std::string again; ///< when it is another one
    } cases[] = {
        {"text", FrameKind::text, "\0Abc\0"s, L"", L"Abc\0"s, {}},
        {"text without a NUL", FrameKind::text, "\0Abc"s, L"", L"Abc", {}},
        {"text of one byte", FrameKind::text, "\3", L"", L"", {}},
        {"text in UTF-16", FrameKind::text, "\1\xFF\xFE\x41\0\x42\0"s, L"", L"\u00FF\u00FEA\0B\0"s, {}},
        {"web", FrameKind::web, "\0home\0http://x"s, L"home\0"s, L"http://x", {}},
        {"web with two NULs", FrameKind::web, "\0\0x\0"s, L"\0"s, L"x\0"s, {}},
        {"web that ends in its only NUL", FrameKind::web, "\0home\0"s, L"home\0"s, L"", {}},
        {"web without a NUL", FrameKind::web, "\0abc"s, L"abc", L"abc", "\0abcabc"s},
        {"web of one byte", FrameKind::web, "\2", L"", L"", {}},
        {"comment", FrameKind::comment, "\0engD\0Hi\0"s, L"D\0"s, L"Hi\0"s, "\0\0\0\0D\0Hi\0"s},
        {"comment without a NUL", FrameKind::comment, "\1engHi"s, L"Hi", L"", "\1\0\0\0Hi"s},
        {"comment of four bytes", FrameKind::comment, "\0eng"s, L"", L"", "\0\0\0\0"s},
    };
    for (const auto& c : cases) {
        clsText_Frame text;
        clsWeb_Frame web;
        clsComment_Frame comment;
        clsFrame* const frame = c.kind == FrameKind::text  ? static_cast<clsFrame*>(&text)
                                : c.kind == FrameKind::web ? static_cast<clsFrame*>(&web)
                                                           : &comment;
        ASSERT_TRUE(frame->parseBytes(bytesOf(c.body))) << c.what;
        EXPECT_EQ(frame->TextEncoding(), c.body[0]) << c.what;
        EXPECT_EQ(frame->Data(), c.data) << c.what;
        EXPECT_EQ((c.kind == FrameKind::web ? static_cast<DescribedFields&>(web) : comment).Description(),
                  c.kind == FrameKind::text ? L"\0"s : c.description)
            << c.what;
        EXPECT_EQ(bodyOf(*frame), bytesOf(c.again.empty() ? c.body : c.again)) << c.what;
    }
    clsText_Frame text;
    ASSERT_TRUE(text.parseBytes(bytesOf(everyByte)));
    EXPECT_EQ(bodyOf(text), bytesOf(everyByte));
    clsComment_Frame comment;
    comment.Language(L"deu");
    ASSERT_TRUE(comment.parseBytes(bytesOf("\0eng\0x"s)));
    EXPECT_EQ(comment.Language(), L"deu") << "the language of a body is read past";
}

TEST(Id3v2Frames, tooShortAndTooLongBodiesFail)
{
    clsText_Frame text;
    clsWeb_Frame web;
    clsComment_Frame comment;
    EXPECT_FALSE(text.parseBytes({}));
    EXPECT_FALSE(web.parseBytes({}));
    for (std::size_t size = 0; size < 4; ++size)
        EXPECT_FALSE(comment.parseBytes(bytesOf(std::string(size, 'x')))) << size;
    for (clsFrame* frame : std::initializer_list<clsFrame*>{&text, &web, &comment}) {
        EXPECT_TRUE(frame->parseBytes(bytesOf(std::string(32767, 'x'))));
        EXPECT_FALSE(frame->parseBytes(bytesOf(std::string(32768, 'x'))));
        frame->Data(std::wstring(32766, L'x'));
        EXPECT_TRUE(frame->getBytes());
        frame->Data(std::wstring(32767, L'x'));
        EXPECT_FALSE(frame->getBytes()) << "with its NUL it is one too long";
        frame->Data(L"");
        EXPECT_TRUE(frame->getBytes());
    }
    web.Description(std::wstring(32767, L'x'));
    EXPECT_FALSE(web.getBytes());
}

TEST(Id3v2Frames, identifierAndFlagsAreCarriedAlong)
{
    clsText_Frame frame;
    for (const auto& [given, kept] : {std::pair(L"TIT2", L"TIT2"), {L"TT", L"TT  "}, {L"TITLE", L"TITL"}}) {
        frame.FrameID(given);
        EXPECT_EQ(frame.FrameID(), kept);
    }
    EXPECT_EQ(frame.getFlags(), clsFrame::Flags{});
    frame.setFlags({std::byte{0xE0}, std::byte{0x1F}});
    EXPECT_EQ(frame.getFlags(), (clsFrame::Flags{std::byte{0xE0}, std::byte{0x1F}}));

    clsFrame empty;
    empty.FrameID(L"TIT2");
    empty.Data(L"x");
    EXPECT_TRUE(empty.parseBytes(bytesOf("\0x"s)));
    EXPECT_EQ(std::wstring(empty.FrameID()) + empty.Data(), L"");
    EXPECT_EQ(bodyOf(empty).size(), 0u);
}

TEST(Id3v2Frames, aCollectionKeepsTheOrderAndCountsFromOne)
{
    clsFrames frames;
    frames.Clear();
    EXPECT_FALSE(frames.item(1));
    std::vector<clsFrames::Frame> made;
    for (const wchar_t* value : {L"a", L"b", L"c"}) {
        made.push_back(std::make_shared<clsText_Frame>());
        made.back()->Data(value);
        frames.Add(made.back());
    }
    const auto all = [&] {
        std::wstring text;
        for (const auto& frame : frames.NewEnum())
            text += frame->Data().substr(0, 1);
        return text;
    };
    EXPECT_EQ(frames.Count(), 3);
    EXPECT_EQ(*frames.item(2), made[1]);
    for (const std::int32_t index : {INT32_MIN, -1, 0, 4, INT32_MAX}) {
        EXPECT_FALSE(frames.item(index)) << index;
        EXPECT_FALSE(frames.Remove(index)) << index;
    }
    made[2]->Data(L"C");
    EXPECT_EQ(all(), L"abC") << "frames are shared";
    EXPECT_TRUE(frames.Remove(1));
    EXPECT_EQ(all(), L"bC");
    frames.Clear();
    EXPECT_EQ(frames.Count(), 0);
}

}
