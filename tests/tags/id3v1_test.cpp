#include "tags/id3v1.h"

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

std::string field(std::string text, std::size_t width)
{
    text.resize(width, '\0');
    return text;
}

/// A block as bytes, made here by hand.
struct Bytes {
    std::string title = {}, artist = {}, album = {}, year = {}, comment = {};
    char zero = 0, track = 0, genre = 0;

    std::string text() const
    {
        return "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field(year, 4) + field(comment, 28) +
               zero + track + genre;
    }
};

class Id3v1 : public testing::Test {
protected:
    void write() { WriteId3v1Tag(files, log, options, state, path); }

    bool take(const std::string& block) { return takeId3v1Block(std::as_bytes(std::span(block)), state); }

    base::Result<bool> read(const std::string& bytes)
    {
        files.put(path, bytes);
        auto file = files.openForReading(path);
        return file ? readId3v1Block(**file, files.length(path), state) : file.failure();
    }

    const std::wstring path = L"C:\\song.mp3";
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    test::FakeSettingsStore store;
    COptions options{store, L"C:\\CDTONQUAY"};
    TagState state;
};

using Slots = std::map<std::size_t, std::wstring>;

TEST_F(Id3v1, theBlockHoldsTheSlotsFittedIntoTheirFields)
{
    const struct {
        const char* what;
        Slots slots;
        Bytes block;
    } cases[] = {
        {"nothing", {}, {}},
        {"all of it",
         {{slot::title, L"Ab  "},
          {slot::artist, L" Ann & Co"},
          {slot::album, L"C d"},
          {slot::year, L"1999"},
          {slot::comment, L"e"},
          {slot::track, L"7"},
          {slot::genre, L"17"}},
         {"Ab", "Ann & Co", "C d", "1999", "e", 0, 7, 17}},
        {"blanks", {{slot::title, std::wstring(30, L' ')}, {slot::year, L"    "}}, {}},
        {"too long",
         {{slot::title, std::wstring(31, L't')},
          {slot::artist, std::wstring(31, L'a')},
          {slot::album, std::wstring(300, L'b')},
          {slot::comment, std::wstring(30, L'c')},
          {slot::year, L"19991"}},
         {std::string(30, 't'), std::string(30, 'a'), std::string(30, 'b'), "1999", std::string(28, 'c')}},
        {"a cut that ends in a blank",
         {{slot::comment, L"abcdefghijklmnopqrstuvwxyz0 1"}},
         {"", "", "", "", "abcdefghijklmnopqrstuvwxyz0"}},
        {"year as it stands", {{slot::year, L" 99"}}, {"", "", "", " 99"}},
        {"umlauts", {{slot::title, L"Ärger für Öl € ŠšŸ"}}, {"\xC4rger f\xFCr \xD6l \x80 \x8A\x9A\x9F"}},
        {"no byte for it",
         {{slot::title, L"Жук \U0001F3B5!"}, {slot::album, std::wstring(31, L'\U0001F3B5')}},
         {"??? ?!", "", std::string(30, '?')}},
        {"largest numbers", {{slot::track, L"255"}, {slot::genre, L"255"}}, {"", "", "", "", "", 0, '\xFF', '\xFF'}},
        {"numbers out of text", {{slot::track, L" 3/12"}, {slot::genre, L"none"}}, {"", "", "", "", "", 0, 3, 0}},
    };
    for (const auto& c : cases) {
        ClearTagInfo(state);
        for (const auto& [place, text] : c.slots)
            state.TagInfo[place] = text;
        files.put(path, "sound");
        write();
        EXPECT_EQ(*files.contents(path), "sound" + c.block.text()) << c.what;
    }
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Id3v1, onlyACutTitleEndsInTheUsersMarker)
{
    store.set(COptions::section, L"FillUp", L"...");
    files.put(path, "x");
    state.TagInfo[slot::title] = std::wstring(31, L't');
    state.TagInfo[slot::artist] = std::wstring(31, L'a');
    write();
    const Bytes block{std::string(27, 't') + "...", std::string(30, 'a')};
    EXPECT_EQ(*files.contents(path), "x" + block.text());
}

TEST_F(Id3v1, aBlockIsWrittenOverAndOneThatIsMissingIsAppended)
{
    const std::string old = Bytes{"old", "old", "old", "2001", "old", 0, 9, 9}.text();
    const struct {
        const char* what;
        std::string before;
        std::string kept; ///< what the new block follows
    } cases[] = {
        {"one byte", "x", "x"},
        {"126 bytes", std::string(126, 'x'), std::string(126, 'x')},
        {"126 bytes that begin like a block", old.substr(0, 126), old.substr(0, 126)},
        {"128 bytes", std::string(128, 'x'), std::string(128, 'x')},
        {"nothing but a block", old, ""},
        {"sound and a block", "sound" + old, "sound"},
        {"a block that is not at the end", "sound" + old + "x", "sound" + old + "x"},
        {"other case", "tag" + std::string(125, 'x'), "tag" + std::string(125, 'x')},
        {"two blocks", old + old, old},
    };
    state.TagInfo[slot::title] = L"new";
    for (const auto& c : cases) {
        files.put(path, c.before);
        write();
        EXPECT_EQ(*files.contents(path), c.kept + Bytes{"new"}.text()) << c.what;
        write();
        EXPECT_EQ(*files.contents(path), c.kept + Bytes{"new"}.text()) << c.what << ", again";
    }
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Id3v1, whatCannotBeTaggedIsPassedOverWithALine)
{
    const std::string old = "sound" + Bytes{"old"}.text();
    const std::string bare(200, 'x');
    const struct {
        const char* what;
        std::string before;
        std::optional<Operation> fails;
        std::string after;
    } cases[] = {
        {"empty", "", {}, ""},
        {"127 bytes", std::string(127, 'x'), {}, std::string(127, 'x')},
        {"attributes", old, Operation::clearAttributes, old},
        {"in use", old, Operation::openBinary, old},
        {"unreadable", old, Operation::read, old},
        {"seek", old, Operation::seek, old},
        {"write into a block", old, Operation::write, old},
        {"write behind the end", bare, Operation::write, bare},
        {"close", old, Operation::close, "sound" + Bytes{"new"}.text()},
    };
    state.TagInfo[slot::title] = L"new";
    for (const auto& c : cases) {
        files.put(path, c.before);
        if (c.fails)
            files.fail(*c.fails, path);
        log.lines.clear();
        write();
        if (c.fails)
            files.heal(*c.fails, path);
        EXPECT_EQ(*files.contents(path), c.after) << c.what;
        ASSERT_EQ(log.lines.size(), 1u) << c.what;
        EXPECT_NE(log.lines[0].find("song.mp3"), std::string::npos) << log.lines[0];
    }
    const auto before = files.allFiles();
    for (const wchar_t* other : {L"C:\\none.mp3", L"C:\\CDTONQUAY", L"", L"D:\\track01.cda"})
        WriteId3v1Tag(files, log, options, state, other);
    EXPECT_EQ(files.allFiles(), before) << "none is made";
}

TEST_F(Id3v1, aFullDiskLosesNothingThatWasThere)
{
    const std::string bare(200, 'x');
    state.TagInfo[slot::title] = L"new";
    files.put(path, bare);
    files.capacity = 250;
    write();
    EXPECT_TRUE(files.contents(path)->starts_with(bare));
    EXPECT_TRUE(log.says("no space"));
    files.put(path, bare + Bytes{"old"}.text());
    files.capacity = 328;
    log.lines.clear();
    write();
    EXPECT_EQ(*files.contents(path), bare + Bytes{"new"}.text()) << "a block that is there needs no room";
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Id3v1, aNumberThatNoByteHoldsEndsTheWriting)
{
    const std::string bare(200, 'x');
    const std::string old = bare + Bytes{"old"}.text();
    for (const std::size_t place : {slot::track, slot::genre}) {
        for (const wchar_t* number : {L"256", L"-1", L"70000", L"1e300"}) {
            ClearTagInfo(state);
            state.TagInfo[place] = number;
            files.put(path, old);
            write();
            EXPECT_EQ(*files.contents(path), old) << ::testing::PrintToString(number);
            files.put(path, bare);
            write();
            EXPECT_EQ(*files.contents(path), bare + "TAG") << ::testing::PrintToString(number);
        }
    }
    EXPECT_EQ(log.lines.size(), 16u);
}

TEST_F(Id3v1, aReadOnlyFileIsTaggedAndStaysWritable)
{
    files.put(path, "sound");
    files.setReadOnly(path);
    write();
    EXPECT_EQ(*files.contents(path), "sound" + Bytes{}.text());
    EXPECT_TRUE(files.writeWhole(path, "new"));
}

TEST_F(Id3v1, aBlockFillsTheSlots)
{
    const std::string blanks(30, ' ');
    const struct {
        const char* what;
        std::string block;
        Slots slots;
    } cases[] = {
        {"all of it",
         Bytes{"T\xE4", "A b", "C", "1999", "d", 0, 7, 17}.text(),
         {{slot::title, L"Tä"},
          {slot::artist, L"A b"},
          {slot::album, L"C"},
          {slot::year, L"1999"},
          {slot::comment, L"d"},
          {slot::track, L"7"},
          {slot::genre, L"17"},
          {slot::id3v1, L"id3v1"}}},
        {"filled up with blanks",
         Bytes{"T" + blanks, " A" + blanks, blanks, "99  ", blanks, 0, 0, '\xFF'}.text(),
         {{slot::title, L"T"},
          {slot::artist, L" A"},
          {slot::year, L"99"},
          {slot::track, L"0"},
          {slot::genre, L"255"},
          {slot::id3v1, L"id3v1"}}},
        {"comment of the older layout",
         Bytes{"", "", "", "", "abcdefghijklmnopqrstuvwxyz01", '2', '3', 1}.text(),
         {{slot::comment, L"abcdefghijklmnopqrstuvwxyz01"}, {slot::track, L"0"}, {slot::genre, L"1"}}},
        {"year of 0", Bytes{.year = "0000", .zero = 'x'}.text(), {{slot::track, L"0"}, {slot::genre, L"0"}}},
        {"no year", Bytes{.year = "abcd", .zero = 'x'}.text(), {{slot::track, L"0"}, {slot::genre, L"0"}}},
        {"short year",
         Bytes{.year = " 99", .zero = 'x'}.text(),
         {{slot::year, L"99"}, {slot::track, L"0"}, {slot::genre, L"0"}}},
    };
    for (const auto& c : cases) {
        ClearTagInfo(state);
        ResetTagFields(state, options);
        ASSERT_TRUE(take(c.block)) << c.what;
        for (std::size_t place = 0; place < state.TagInfo.size(); ++place) {
            const auto wanted = c.slots.find(place);
            EXPECT_EQ(state.TagInfo[place], wanted == c.slots.end() ? L"" : wanted->second) << c.what << ", " << place;
        }
    }
}

TEST_F(Id3v1, whatAnEarlierReaderHasFoundIsKeptButForTheGenre)
{
    ResetTagFields(state, options);
    state.id3v1.Artist = L"Ann";
    state.id3v1.Track = 3;
    state.id3v1.Genre = 80;
    ASSERT_TRUE(take(Bytes{"T", "Bob", "C", "1999", "d", 0, 7, 17}.text()));
    EXPECT_EQ(state.TagInfo[slot::artist], L"Ann");
    EXPECT_EQ(state.TagInfo[slot::title], L"T");
    EXPECT_EQ(state.TagInfo[slot::track], L"3");
    EXPECT_EQ(state.TagInfo[slot::id3v1], L"");
    EXPECT_EQ(state.TagInfo[slot::genre], L"17");
}

TEST_F(Id3v1, theBlockOfAFileIsFoundByItsLength)
{
    const std::string block = Bytes{.title = "T"}.text();
    enum class Outcome { none, found, failed };
    const struct {
        const char* what;
        std::string bytes;
        Outcome outcome;
    } cases[] = {
        {"empty", "", Outcome::none},
        {"1", "T", Outcome::none},
        {"126", block.substr(0, 126), Outcome::none},
        {"127", block.substr(0, 127), Outcome::failed},
        {"128", block, Outcome::found},
        {"128 of sound", std::string(128, 'x'), Outcome::none},
        {"sound and a block", "sound" + block, Outcome::found},
        {"more behind the block", block + "x", Outcome::none},
    };
    for (const auto& c : cases) {
        ClearTagInfo(state);
        const auto there = read(c.bytes);
        EXPECT_EQ(there ? (*there ? Outcome::found : Outcome::none) : Outcome::failed, c.outcome) << c.what;
        EXPECT_EQ(state.TagInfo[slot::title], c.outcome == Outcome::found ? L"T" : L"") << c.what;
        EXPECT_EQ(state.TagInfo[slot::genre], c.outcome == Outcome::found ? L"0" : L"") << c.what;
    }
    EXPECT_FALSE(take(block.substr(0, 127)));
    EXPECT_FALSE(take(block + "x"));
    EXPECT_FALSE(take("XAG" + block.substr(3)));
    // The file has become shorter since its length was asked.
    files.put(path, "TAG and then its end");
    auto file = files.openForReading(path);
    ASSERT_TRUE(file);
    const auto there = readId3v1Block(**file, 128, state);
    EXPECT_TRUE(there && !*there);
    EXPECT_FALSE(readId3v1Block(**file, 500, state));
    EXPECT_EQ(state.TagInfo[slot::genre], L"");
}

}
