#include "tags/vorbis_tag.h"

#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "tags/ogg_bytes.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tonquay::tags {

void PrintTo(const VorbisTag& tag, std::ostream* out)
{
    for (const auto* text :
         {&tag.Title, &tag.Artist, &tag.Album, &tag.Genre, &tag.Date, &tag.Comment, &tag.EncodedUsing, &tag.Reserved})
        *out << ::testing::PrintToString(*text) << ' ';
    *out << tag.TrackNumber;
}

}

namespace {

using namespace tonquay;
using namespace tonquay::tags::test;
using namespace std::string_literals;
using Operation = tonquay::test::FakeFileSystem::Operation;
using tags::VorbisTag;

const std::string setup = "\5vorbis" + std::string(40, 's');

/// The beginning of a file whose setup packet follows at once.
std::string file(const std::vector<std::string>& texts, std::uint32_t vendorLength = 29)
{
    return page(first, 1, identification) + page(0, 1, comments(texts, vendorLength) + '\1' + setup);
}

class VorbisTagTest : public testing::Test {
protected:
    VorbisTag read(const std::string& bytes)
    {
        files.put(path, bytes);
        return tags::ReadVorbisTag(files, log, path);
    }

    const std::wstring path = L"C:\\song.ogg";
    tonquay::test::FakeFileSystem files;
    tonquay::test::FakeDiagnostics log;
};

TEST_F(VorbisTagTest, valuesAreCutOutBehindTheFirstPlaceOfTheirKeys)
{
    const std::string comment256 = "artist=" + std::string(249, 'x');
    const struct {
        const char* what;
        std::vector<std::string> texts;
        VorbisTag tag;
    } cases[] = {
        {"all of it, in any order and case",
         {"encoded_using=Enc 1", "Genre=Rock", "TRACKNUMBER=7", "date=1999", "album= C d ", "artist=Ann", "comment=Hi",
          "title=Ab"},
         {.Title = L"Ab",
          .Artist = L"Ann",
          .Album = L" C d ",
          .Genre = L"Rock",
          .Date = L"1999",
          .Comment = L"Hi",
          .TrackNumber = 7,
          .EncodedUsing = L"Enc 1"}},
        {"empty ones", {"title=", "artist=Ann", "album="}, {.Artist = L"Ann"}},
        {"UTF-8", {"title=Na\xC3\xAFve \xE2\x99\xAA", "artist=\xC3\x84"}, {.Title = L"Naïve ♪", .Artist = L"Ä"}},
        {"not UTF-8", {"title=Na\xEFve", "artist=\x80"}, {.Title = L"Naïve", .Artist = L"€"}},
        {"key inside another value", {"title=a date=5", "date=1999"}, {.Title = L"a date=5", .Date = L"5"}},
        {"the word, and what stands eight characters behind it",
         {"title=No comment, please", "comment=Hi"},
         {.Title = L"No comment, please", .Comment = L" please"}},
        {"the word at the end of a value", {"title=No comment", "album=C"}, {.Title = L"No comment", .Album = L"C"}},
        {"line end behind a comment", {"comment=Hi\r\n", "album=C\r\n"}, {.Album = L"C\r\n", .Comment = L"Hi"}},
        {"two line ends", {"comment=Hi\r\n\r\n"}, {.Comment = L"Hi\r\n"}},
        {"number with more behind it", {"tracknumber=07/12"}, {.TrackNumber = 7}},
        {"number that is none", {"tracknumber=x"}, {}},
        {"number that does not fit", {"tracknumber=32768", "genre=Pop"}, {.Genre = L"Pop"}},
        {"a length of 256 does not end a value",
         {"title=Ab", comment256},
         {.Title = L"Ab\0\1\0\0artist="s + std::wstring(249, L'x'), .Artist = std::wstring(249, L'x')}},
        {"a length of 0 takes a character", {"title=Ab", "", "album=C"}, {.Title = L"A", .Album = L"C"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(read(file(c.texts)), c.tag) << c.what;
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(VorbisTagTest, aLastValueRunsOnIntoThePageThatFollows)
{
    const std::string bytes = page(0, 1, comments({"title=Ab"}) + '\1') + page(0, 1, setup);
    EXPECT_EQ(read(bytes).Title, L"Ab\1Ogg");
}

TEST_F(VorbisTagTest, theFirstValueWithoutAnEndIsTheLast)
{
    const std::string bytes = file({"title=Ab", "album=C"}) + "artist=Ann";
    EXPECT_EQ(read(bytes), (VorbisTag{.Title = L"Ab"}));
}

TEST_F(VorbisTagTest, onlyWholeCommentsOfKnownVendorsInTheFirstBlockAreFound)
{
    const VorbisTag title{.Title = L"Ab"};
    const std::string packet = comments({"title=Ab", "x"}) + '\1';
    const std::string unknown = comments({"title=Ab", "x"}, 152) + '\1' + setup;
    const auto filled = [](std::string bytes, std::size_t length) {
        bytes.resize(length, '.');
        return bytes;
    };
    // The mark's place in its block leads to the comments of another vendor, 100 bytes into the file.
    const std::string decoy = filled(std::string(100, '.') + unknown, 2048 + 100) + "\3vorbis\x1D";
    const std::string elsewhere =
        filled(filled("", 100) + "\5vorbis" + comments({"title=Ab", "x"}, 152), 2048 + 100) + "\3vorbis ";
    const struct {
        const char* what;
        std::string bytes;
        bool found;
    } cases[] = {
        {"empty", "", false},
        {"vendor of 29", file({"title=Ab"}), true},
        {"vendor of 32", file({"title=Ab"}, 32), true},
        {"vendor of 28", file({"title=Ab"}, 28), false},
        {"vendor of 52", file({"title=Ab"}, 52), false},
        {"the mark of 29 first", packet + "\3vorbis " + setup, true},
        {"the mark of 32 first", comments({"title=Ab", "x"}, 32) + "\1\3vorbis\x1D" + setup, true},
        {"no setup packet", packet + std::string(3000, '.'), false},
        {"setup packet in the block's last bytes", filled(packet, 2041) + setup, true},
        {"setup packet past the block", filled(packet, 2042) + setup, false},
        {"setup packet past the block, comments further in", filled(".......", 50) + filled(packet, 2041) + setup,
         true},
        {"mark at the end of the first block", filled("", 2040) + packet + setup, true},
        {"mark across the end of the first block", filled("", 2041) + packet + setup, false},
        {"mark in the second block", filled("", 2100) + packet + setup, false},
        {"mark in a later block that leads somewhere", filled(decoy, 4096), true},
        {"mark in a later block that leads to a setup packet", filled(elsewhere, 4096), false},
        {"the same, in a last block of 200 bytes", filled(decoy, 2248), true},
        {"the same, in a last block that is too short for it", filled(decoy, 2178), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(read(c.bytes), c.found ? title : VorbisTag{}) << c.what;
}

TEST_F(VorbisTagTest, whatCannotBeReadIsEmptyAndLeavesALine)
{
    const std::string bytes = file({"title=Ab"});
    const std::pair<Operation, int> troubles[] = {
        {Operation::openForReading, 0}, {Operation::read, 0}, {Operation::read, 1}, {Operation::seek, 0}};
    for (const auto& [operation, after] : troubles) {
        log.lines.clear();
        files.fail(operation, path, base::Failure::Kind::unreadable, after);
        EXPECT_EQ(read(bytes), VorbisTag{});
        files.heal(operation, path);
        EXPECT_TRUE(log.says("song.ogg"));
    }
    EXPECT_EQ(tags::ReadVorbisTag(files, log, L"C:\\none.ogg"), VorbisTag{});
    EXPECT_FALSE(files.fileExists(L"C:\\none.ogg"));
}

}
