#include "tags/id3v2_tag.h"

#include "id3v2_maker.h"
#include "support/fake_clock.h"
#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace tonquay;
using namespace tonquay::tags;
using namespace std::string_literals;
using test::frame;
using test::sized;
using test::text;
using test::zeros;
using Operation = test::FakeFileSystem::Operation;
using Values = std::map<FrameValueID, std::wstring>;

class Id3v2Read : public testing::Test {
protected:
    void read(const std::string& bytes)
    {
        files.put(path, bytes);
        tag.ReadTag(path);
    }

    /// All values that are not empty.
    Values values() const
    {
        Values found;
        for (int number = -1; number <= 14; ++number)
            if (std::wstring value = tag.GetFrameValue(FrameValueID{number}); !value.empty())
                found[FrameValueID{number}] = value;
        return found;
    }

    const std::wstring path = L"C:\\song.mp3";
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    test::FakeClock clock;
    clsID3v2 tag{files, log, clock};
};

TEST_F(Id3v2Read, aTagIsThereWhenItsHeaderSaysSo)
{
    const struct {
        const char* what;
        std::string file;
        bool tag;
    } cases[] = {
        {"empty", "", false},
        {"cut in the marker", "ID", false},
        {"cut before the version", "ID3", false},
        {"cut behind the version", "ID3\3", true},
        {"header alone", test::tag(""), true},
        {"header that claims the largest size", "ID3\3\0\0\xFF\xFF\xFF\xFF"s, true},
        {"any revision and flags", test::tag("", 3, '\xFF', '\xFF'), true},
        {"version 2", test::tag(text("TIT2", "T"), 2), false},
        {"version 4", test::tag(text("TIT2", "T"), 4), false},
        {"other case", "id3\3" + zeros(6), false},
        {"not at the start", " " + test::tag(""), false},
    };
    EXPECT_FALSE(tag.HasTag());
    for (const auto& c : cases) {
        read(test::tag(text("TPE1", "of the file before")));
        ASSERT_TRUE(tag.HasTag());
        read(c.file);
        EXPECT_EQ(tag.HasTag(), c.tag) << c.what;
        EXPECT_EQ(values(), Values{}) << c.what;
        EXPECT_EQ(*files.contents(path), c.file) << c.what;
    }
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Id3v2Read, framesBecomeValues)
{
    using enum FrameValueID;
    const std::string shortTitle = text("TIT2", "T");
    const auto upTo = [](std::size_t place) { return frame("APIC", zeros(place - 10)); };
    const struct {
        const char* what;
        std::string file;
        Values values;
    } cases[] = {
        {"all twelve",
         test::tag(text("TRCK", "3/12") + shortTitle + text("TPE1", "A") + text("TALB", "B") + text("TYER", "1999") +
                   text("TCON", "(17)") + frame("COMM", "\0engD\0Hi\0"s) + text("TCOM", "C") + text("TOPE", "O") +
                   text("TCOP", "c") + frame("WXXX", "\0home\0http://x"s) + text("TENC", "lame")) +
             "sound",
         {{track, L"3/12"},
          {title, L"T"},
          {artist, L"A"},
          {album, L"B"},
          {year, L"1999"},
          {genre, L"(17)"},
          {comment, L"Hi"},
          {composer, L"C"},
          {originalArtist, L"O"},
          {copyright, L"c"},
          {webLink, L"http://x"},
          {encodedBy, L"lame"}}},
        {"padding", test::tag(shortTitle + zeros(10) + text("TALB", "B")), {{title, L"T"}}},
        {"nothing but padding", test::tag(zeros(40)), {}},
        {"a name with a NUL at its end is padding", test::tag(frame("TT2\0"s, "x") + shortTitle), {}},
        {"not served",
         test::tag(frame("APIC", "x") + frame("tit2", "x") + frame("    ", "x") + text("TALB", "B")),
         {{album, L"B"}}},
        {"two of a name", test::tag(shortTitle + text("TIT2", "second")), {{title, L"T"}}},
        {"UTF-16", test::tag(frame("TIT2", "\1\xFF\xFE\x41\0\x42\0"s)), {{title, L"\u00FF\u00FEAB"}}},
        {"flags do not matter", test::tag(frame("TIT2", "\0T"s, '\xFF', '\xFF'), 3, 9, '\xFF'), {{title, L"T"}}},
        {"a comment that is too short", test::tag(frame("COMM", "\0en"s) + shortTitle), {{title, L"T"}}},

        {"a foreign size is read in groups of seven",
         test::tag("TIT2\0\0\1\0\0\0"s + "\0T"s + zeros(126) + text("TALB", "B")),
         {{title, L"T"}, {album, L"B"}}},
        {"a byte of 255 in a size counts as that",
         test::tag("TIT2\0\0\0\xFF\0\0"s + "\0T"s + zeros(253) + text("TALB", "B")),
         {{title, L"T"}, {album, L"B"}}},

        {"no bytes, so those of the frame before",
         test::tag(shortTitle + frame("TALB", "") + text("TPE1", "A")),
         {{title, L"T"}, {album, L"T"}, {artist, L"A"}}},
        {"no bytes, so those of a frame that is not served",
         test::tag(frame("APIC", "\0P"s) + frame("TALB", "")),
         {{album, L"P"}}},
        {"no bytes and none before", test::tag(frame("TALB", "") + shortTitle), {{title, L"T"}}},

        {"up to place 1000", test::tag(upTo(986) + frame("TIT2", "\0Abcd"s) + text("TALB", "B")), {{title, L"Abcd"}}},
        {"up to place 1001", test::tag(upTo(987) + frame("TIT2", "\0Abcd"s) + text("TALB", "B")), {}},
        {"no bytes at place 1000", test::tag(frame("APIC", "\0P"s + zeros(978)) + frame("TALB", "")), {{album, L"P"}}},
        {"no bytes at place 1001", test::tag(frame("APIC", "\0P"s + zeros(979)) + frame("TALB", "")), {}},
        {"the end of the walk comes before the rest", test::tag(frame("APIC", zeros(1001)) + shortTitle), {}},
        {"a size past everything", test::tag("APIC\xFF\xFF\xFF\xFF\0\0"s + shortTitle), {}},
        {"the file ends in a frame",
         test::tag(shortTitle + frame("TALB", "\0Abcdef"s)).substr(0, 10 + 13 + 10 + 4),
         {{title, L"T"}, {album, L"Abc"}}},
        {"the file ends in the header of a frame",
         test::tag(shortTitle + text("TALB", "B")).substr(0, 10 + 13 + 9),
         {{title, L"T"}}},
        {"a frame ends behind the tag: what is there is not its own",
         "ID3\3\0\0"s + sized(14) + frame("TIT2", "\0Abcdefgh"s),
         {{title, L"Abc"}}},
        {"nine bytes are no header", "ID3\3\0\0"s + sized(13 + 9) + shortTitle + text("TALB", "B"), {{title, L"T"}}},
        {"ten are", "ID3\3\0\0"s + sized(13 + 10) + shortTitle + text("TALB", "B"), {{title, L"T"}}},
    };
    for (const auto& c : cases) {
        read(c.file);
        EXPECT_TRUE(tag.HasTag()) << c.what;
        EXPECT_EQ(values(), c.values) << c.what;
    }
}

TEST_F(Id3v2Read, readingChangesNothingAndNeedsNoMoreThanReading)
{
    const std::string bytes = test::tag(text("TIT2", "T"));
    files.put(path, bytes);
    files.setReadOnly(path);
    files.fail(Operation::openBinary, L"");
    files.fail(Operation::write, L"");
    tag.ReadTag(path);
    EXPECT_EQ(tag.GetFrameValue(FrameValueID::title), L"T");
    EXPECT_TRUE(files.isReadOnly(path));
    const auto before = files.allFiles();
    for (const wchar_t* other : {L"C:\\none.mp3", L"C:\\CDTONQUAY", L"", L"D:\\track01.cda"}) {
        tag.ReadTag(other);
        EXPECT_FALSE(tag.HasTag());
        EXPECT_EQ(values(), Values{});
    }
    EXPECT_EQ(files.allFiles(), before) << "a missing file is not made";
    EXPECT_EQ(log.lines.size(), 4u);
}

TEST_F(Id3v2Read, whatCannotBeReadIsPassedOverWithALine)
{
    const std::string bytes = test::tag(text("TIT2", "T"));
    const struct {
        Operation operation;
        int after;
        bool tag;
    } cases[] = {{Operation::openForReading, 0, false}, {Operation::read, 0, false}, {Operation::read, 1, true}};
    for (const auto& c : cases) {
        read(bytes);
        files.fail(c.operation, path, base::Failure::Kind::unreadable, c.after);
        log.lines.clear();
        tag.ReadTag(path);
        files.heal(c.operation, path);
        EXPECT_EQ(tag.HasTag(), c.tag);
        EXPECT_EQ(values(), Values{});
        EXPECT_EQ(log.lines.size(), 1u);
    }
}

}
