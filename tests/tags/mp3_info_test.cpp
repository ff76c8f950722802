#include "tags/mp3_info.h"

#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "support/fake_settings_store.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace tonquay;
using namespace tonquay::tags;
using namespace std::string_literals;
using Operation = test::FakeFileSystem::Operation;
using Slots = std::map<std::size_t, std::wstring>;

std::string filled(std::string text, std::size_t length)
{
    text.resize(length, '\0');
    return text;
}

const std::string stereo128 = "\xFF\xFB\x90"s + '\0';

/// A first frame with a Xing header, made here by hand.
std::string xing(const std::string& flagsFramesBytes)
{
    return stereo128 + filled("", 32) + "Xing" + flagsFramesBytes;
}

const std::string id3v1 =
    "TAG" + filled("R & B", 30) + filled("Ann", 30) + filled("", 30) + "1999" + filled("", 28) + "\0\x07\x11"s;

std::string id3v2(char version, const std::string& size, const std::string& body)
{
    return "ID3"s + version + filled("", 2) + size + body;
}

class Mp3Info : public testing::Test {
protected:
    void read(const std::string& bytes, std::int16_t mode = 0)
    {
        files.put(path, bytes);
        files.setReadOnly(path);
        tagsRead = 0;
        ReadMp3Info(files, log, options, reader, state, path, mode);
        EXPECT_EQ(files.contents(path), bytes);
    }

    void expectSlots(const Slots& wanted, const char* what) const
    {
        for (std::size_t place = 0; place < state.TagInfo.size(); ++place) {
            const auto there = wanted.find(place);
            EXPECT_EQ(state.TagInfo[place], there == wanted.end() ? L"" : there->second) << what << ", " << place;
        }
    }

    const std::wstring path = L"C:\\song.mp3";
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    test::FakeSettingsStore store;
    COptions options{store, L"C:\\CDTONQUAY"};
    TagState state;
    std::map<int, std::wstring> values; ///< of an ID3v2 tag
    int tagsRead = 0;
    const Id3v2Reader reader = [this](std::wstring_view) {
        ++tagsRead;
        return [this](int frame) { return values[frame]; };
    };
};

TEST_F(Mp3Info, aFrameAndATagAtTheEndFillTheSlots)
{
    read(filled(stereo128, 160000 - 128) + id3v1);
    expectSlots({{slot::id3v1, L"id3v1"},
                 {slot::sampleRate, L"44"},
                 {slot::playSeconds, L"10"},
                 {slot::vbr, L"No"},
                 {slot::track, L"7"},
                 {slot::channels, L"Stereo"},
                 {slot::bitrate, L"128"},
                 {slot::artist, L"Ann"},
                 {slot::title, L"R & B"},
                 {slot::genre, L"17"},
                 {slot::year, L"1999"}},
                "128 kbps");
    EXPECT_EQ(state.stream.MpegVersion, 1);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Mp3Info, ofALargeFileOneBlockAndTheTagAreRead)
{
    files.fail(Operation::read, path, base::Failure::Kind::unreadable, 3);
    read(filled(stereo128, 1000000) + id3v1);
    EXPECT_EQ(state.TagInfo[slot::artist], L"Ann");
    EXPECT_EQ(state.TagInfo[slot::bitrate], L"128");
}

TEST_F(Mp3Info, bitrateAndPlayTimeComeFromTheFrameOrItsXingHeader)
{
    const struct {
        const char* what;
        std::string sound;
        std::size_t length; ///< of the whole file
        const wchar_t* bitrate;
        const wchar_t* seconds;
        const wchar_t* vbr = L"No";
    } cases[] = {
        {"320 kbps", "\xFF\xFB\xE0", 120000, L"320", L"3"},
        {"half a second", stereo128, 8000, L"128", L"0"},
        {"a second and a half", stereo128, 24000, L"128", L"2"},
        {"version 2", "\xFF\xF3\x40", 8000, L"32", L"2"},
        {"Xing", xing("\0\0\0\x0F\0\0\x03\xE8\0\x06\x64\x5D"s), 500, L"128", L"26", L"Yes"},
        {"Xing, frames only", xing("\0\0\0\x01\0\0\x03\xE8\0\x06\x64\x5D"s), 500, L"0", L"0", L"Yes"},
        {"Xing, bytes only", xing("\0\0\0\x02\0\0\x03\xE8\0\x06\x64\x5D"s), 500, L"0", L"0", L"Yes"},
        {"Xing, no frames", xing("\0\0\0\x03\0\0\0\0\0\x06\x64\x5D"s), 500, L"320", L"0", L"Yes"},
        {"Xing, a rate too large", xing("\0\0\0\x03\0\0\0\x01\0\x06\x64\x5D"s), 500, L"320", L"0", L"Yes"},
        {"Xing, the longest time", xing("\0\0\0\x03\0\x13\x18\xD0\0\0\0\0"s), 500, L"0", L"32767", L"Yes"},
        {"Xing, a time too long", xing("\0\0\0\x03\0\x13\x18\xD1\0\0\0\0"s), 500, L"0", L"-1", L"Yes"},
        {"Xing, largest numbers", xing("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), 500, L"0", L"-1", L"Yes"},
    };
    for (const auto& c : cases) {
        read(filled(c.sound, c.length - 128) + id3v1);
        EXPECT_EQ(state.TagInfo[slot::bitrate], c.bitrate) << c.what;
        EXPECT_EQ(state.TagInfo[slot::playSeconds], c.seconds) << c.what;
        EXPECT_EQ(state.TagInfo[slot::vbr], c.vbr) << c.what;
    }
}

TEST_F(Mp3Info, withoutATagAtTheEndOnlyTheStreamValuesStay)
{
    const struct {
        const char* what;
        std::string bytes;
        Slots slots;
    } cases[] = {
        {"too short for a tag", filled(stereo128, 126), {{slot::bitrate, L"128"}}},
        {"one byte short of a tag", id3v1.substr(0, 100) + filled(stereo128, 27), {}},
        {"long enough", filled(stereo128, 4000), {}},
        {"a tag of version 4 before it", filled(id3v2(4, "\0\0\0\x04"s, "text") + stereo128, 4000), {}},
        // Its length is the last byte that the file has, many times over.
        {"a header that the file cuts off",
         id3v2(3, "", "").substr(0, 4) + "\xFF\xFB",
         {{slot::bitrate, L"128"}, {slot::id3v2, L"2"}}},
    };
    for (const auto& c : cases) {
        read(c.bytes);
        expectSlots(c.slots, c.what);
        EXPECT_EQ(state.stream.BitrateKbps, 128) << c.what;
        EXPECT_EQ(state.stream.ChannelCode, 1) << c.what;
    }
}

TEST_F(Mp3Info, ofAFileWithoutSoundNothingIsKnown)
{
    const std::string good = filled(stereo128, 4000) + id3v1;
    const struct {
        const char* what;
        std::string bytes;
        std::optional<Operation> fails = {};
    } cases[] = {{"empty", ""},
                 {"nothing but a tag at the end", id3v1},
                 {"sound that begins too late", filled("", 32766) + good},
                 {"a tag longer than the file, and no sound", id3v2(3, "\x01\0\0\0"s, "text")},
                 {"in use", good, Operation::openForReading},
                 {"unreadable", good, Operation::read},
                 {"no place in it", good, Operation::seek}};
    const auto expectNothing = [&](const char* what) {
        expectSlots({}, what);
        EXPECT_EQ(state.stream.BitrateKbps, -1) << what;
        EXPECT_EQ(state.id3v1.Title, L"") << what;
    };
    for (const auto& c : cases) {
        read(good);
        if (c.fails)
            files.fail(*c.fails, path);
        log.lines.clear();
        read(c.bytes);
        if (c.fails)
            files.heal(*c.fails, path);
        expectNothing(c.what);
        EXPECT_EQ(log.says("song.mp3"), c.fails.has_value()) << c.what;
    }
    const auto before = files.allFiles();
    for (const wchar_t* other : {L"C:\\none.mp3", L"C:\\CDTONQUAY", L"", L"D:\\track01.cda"}) {
        read(good);
        ReadMp3Info(files, log, options, reader, state, other);
        expectNothing("no file");
    }
    EXPECT_EQ(files.allFiles().size(), before.size()) << "none is made";
}

TEST_F(Mp3Info, theBytesAtTheStartDecideWhetherAnId3v2TagIsRead)
{
    const std::string blanks(5000, ' ');
    const struct {
        const char* what;
        std::string start;
        bool isRead;
        const wchar_t* mark; ///< slot::id3v2
        std::int16_t mode = 0;
    } cases[] = {
        {"version 3", id3v2(3, "\0\0\0\x04"s, "text"), true, L"2"},
        {"version 4", id3v2(4, "\0\0\0\x04"s, "text"), false, L"2"},
        {"whatever the first byte", "X" + id3v2(3, "\0\0\0\x04"s, "text").substr(1), true, L"2"},
        {"other letters", "IDX\x03" + filled("", 6) + "text", false, L""},
        {"sound at once", "I\xFA" + id3v2(3, "\0\0\0\x04"s, "text").substr(2), false, L""},
        {"no text", id3v2(3, filled("", 4), "text"), false, L""},
        {"blanks", id3v2(3, "\0\0\0\x04"s, "    text"), false, L""},
        {"blanks in version 4", id3v2(4, "\0\0\0\x04"s, "    text"), false, L""},
        {"NULs are text", id3v2(3, "\0\0\0\x04"s, filled("", 4)), true, L"2"},
        {"text behind 5000 blanks", id3v2(3, "\0\0\x27\x09"s, blanks + "x"), true, L"2"},
        {"text behind the blanks' end", id3v2(3, "\0\0\x27\x08"s, blanks + "x"), false, L""},
        {"as long as the file", id3v2(3, "\0\0\x4E\x14"s, "text"), true, L"2"},
        {"longer than the file", id3v2(3, "\0\0\x4E\x15"s, "text"), false, L"2"},
        {"third byte of 1", id3v2(3, "\0\x01\0\0"s, "text"), false, L"2"},
        {"third byte of 2 counts for nothing", id3v2(3, "\0\x02\0\x04"s, "text"), true, L"2"},
        {"third byte of 255", id3v2(3, "\0\xFF\0\x04"s, "text"), true, L"2"},
        {"fourth byte", id3v2(3, "\x01\0\0\x04"s, "text"), false, L"2"},
        {"largest size", id3v2(3, "\xFF\xFF\xFF\xFF"s, "text"), false, L"2"},
        {"mode 1", id3v2(3, "\0\0\0\x04"s, "text"), false, L"", 1},
        {"mode 3", id3v2(3, "\0\0\0\x04"s, "text"), false, L"", 3},
    };
    for (const auto& c : cases) {
        read(filled(c.start + stereo128, 10004 - 128) + id3v1, c.mode);
        EXPECT_EQ(tagsRead, c.isRead ? 1 : 0) << c.what;
        EXPECT_EQ(state.TagInfo[slot::id3v2], c.mark) << c.what;
        EXPECT_EQ(state.TagInfo[slot::bitrate], c.isRead ? L"" : L"128") << c.what;
        EXPECT_EQ(state.stream.BitrateKbps, c.isRead ? -1 : 128) << c.what;
    }
}

TEST_F(Mp3Info, theValuesOfAnId3v2TagFillTheSlots)
{
    values = {{1, L" 5/12 "},      {2, L"Tom & Jerry's [live]"},
              {3, L"Ä€Ж–é.,-/9:"}, {4, L"az AZ {09} @`~ÀÿÞ"},
              {5, L"(1999)"},      {6, L" Jazz & Co "},
              {7, L"  a\tb  "},    {8, L"C & D"},
              {9, L"   "},         {10, L"(c)"},
              {11, L"http://x"},   {12, L"E*"}};
    const std::string bytes = filled(id3v2(3, "\0\0\0\x04"s, "text") + stereo128, 4000) + id3v1;
    read(bytes);
    expectSlots({{slot::track, L"5/12"},
                 {slot::title, L"Tom   Jerry s  live"},
                 {slot::artist, L"Ä Ж é.,-/9"},
                 {slot::album, L"az AZ  09     ÀÿÞ"},
                 {slot::year, L"(1999)"},
                 {slot::genreName, L"Jazz & Co"},
                 {slot::comment, L"a b"},
                 {slot::composer, L"C & D"},
                 {slot::copyright, L"(c)"},
                 {slot::webLink, L"http://x"},
                 {slot::encodedBy, L"E*"},
                 {slot::id3v2, L"2"}},
                "all of it");
    const std::pair<const wchar_t*, const wchar_t*> genres[] = {
        {L" (17)Rocky", L"Rock"}, {L"(4", L"Disco"}, {L"(", L"Blues"}, {L"(RX)", L"Blues"},
        {L"(148)", L""},          {L"(70000)", L""}, {L"17", L"17"},   {L"", L""}};
    for (const auto& [value, name] : genres) {
        values[6] = value;
        read(bytes);
        EXPECT_EQ(state.TagInfo[slot::genreName], name) << ::testing::PrintToString(value);
    }
}

TEST_F(Mp3Info, modeTwoTakesTheEndForATagWhateverItsMark)
{
    const std::string unmarked = filled(stereo128, 4000) + "XXX" + id3v1.substr(3);
    for (const std::int16_t mode : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}, std::int16_t{3}}) {
        read(unmarked, mode);
        EXPECT_EQ(state.TagInfo[slot::artist], mode == 2 ? L"Ann" : L"") << mode;
        EXPECT_EQ(state.TagInfo[slot::bitrate], mode == 2 ? L"128" : L"") << mode;
    }
    read(id3v1.substr(1), 2);
    expectSlots({}, "a tag alone has no sound");
    read(stereo128.substr(0, 2) + filled("Title", 30) + id3v1.substr(33), 2);
    EXPECT_EQ(state.TagInfo[slot::title], L"Title") << "127 bytes";
}

}
