#include "base/text.h"
#include "console/file_report.h"
#include "console/mp3_tag_edit.h"
#include "console/ogg_tag_edit.h"
#include "support/fake_file_system.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <string>

namespace tonquay::console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::string_literals;

std::string field(const std::string& text, std::size_t width)
{
    std::string bytes = text;
    bytes.resize(width, '\0');
    return bytes;
}

/// The 128 bytes by the public layout: a comment of 28 with a zero and a track behind it, or one of 30.
std::string block(const std::string& title, const std::string& artist, const std::string& album,
                  const std::string& year, const std::string& comment, int track, int genre)
{
    const std::string end = comment.size() > 28 ? comment : field(comment, 28) + '\0' + static_cast<char>(track);
    return "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field(year, 4) + end +
           static_cast<char>(genre);
}

const std::string sound = std::string(200, '\xFF') + "sound";
constexpr auto path = L"C:\\a.mp3";

TEST(Mp3TagEdit, namedFieldsChangeAndNoOtherByte)
{
    // Bytes that no program of today would write are kept all the same.
    const std::string odd = "TAG" + std::string("Ti\0tle junk behind a NUL!!!!!!\x80", 30) + field("Ann", 30) +
                            std::string(30, ' ') + "19\0x"s + field("note", 28) + '\0' + '\3' + '\x11';
    ASSERT_EQ(odd.size(), 128U);
    const std::string longComment(30, 'c');
    const struct {
        const char* what;
        std::string before;
        TagChanges changes;
        std::string after;
    } cases[] = {
        {"title",
         odd,
         {{TagField::title, L"Größe"}},
         "TAG" +
             field("Gr\xF6\xDF"
                   "e",
                   30) +
             odd.substr(33)},
        {"artist of 30",
         odd,
         {{TagField::artist, std::wstring(30, L'a')}},
         odd.substr(0, 33) + std::string(30, 'a') + odd.substr(63)},
        {"album emptied", odd, {{TagField::album, L""}}, odd.substr(0, 63) + field("", 30) + odd.substr(93)},
        {"year", odd, {{TagField::year, L"7"}}, odd.substr(0, 93) + field("7", 4) + odd.substr(97)},
        {"genre", odd, {{TagField::genre, L"Jazz"}}, odd.substr(0, 127) + '\x08'},
        {"no genre", odd, {{TagField::genre, L""}}, odd.substr(0, 127) + '\xFF'},
        {"track", odd, {{TagField::track, L"99"}}, odd.substr(0, 126) + '\x63' + odd.substr(127)},
        {"no track", odd, {{TagField::track, L""}}, odd.substr(0, 126) + '\0' + odd.substr(127)},
        {"comment beside a track",
         odd,
         {{TagField::comment, std::wstring(28, L'k')}},
         odd.substr(0, 97) + std::string(28, 'k') + odd.substr(125)},
        {"comment of the older layout",
         block("", "", "", "", longComment, 0, 1),
         {{TagField::comment, std::wstring(30, L'k')}},
         block("", "", "", "", std::string(30, 'k'), 0, 1)},
        {"no track for the older layout",
         block("", "", "", "", longComment, 0, 1),
         {{TagField::track, L""}},
         block("", "", "", "", longComment, 0, 1)},
        {"a track for the older layout",
         block("", "", "", "", longComment, 0, 1),
         {{TagField::track, L"5"}},
         block("", "", "", "", std::string(28, 'c'), 5, 1)},
        {"comment and track at once",
         block("", "", "", "", longComment, 0, 1),
         {{TagField::track, L"5"}, {TagField::comment, std::wstring(28, L'k')}},
         block("", "", "", "", std::string(28, 'k'), 5, 1)},
        {"nothing new", odd, {{TagField::artist, L"Ann"}, {TagField::track, L"3"}}, odd},
    };
    for (const auto& c : cases) {
        test::FakeFileSystem files;
        files.put(path, sound + c.before);
        const auto remarks = editMp3Tag(files, path, c.changes, {.title = L"never taken"});
        ASSERT_TRUE(remarks) << c.what << base::describe(remarks.failure());
        EXPECT_THAT(*remarks, IsEmpty()) << c.what;
        EXPECT_EQ(*files.contents(path), sound + c.after) << c.what;
    }
}

TEST(Mp3TagEdit, aNewBlockSaysWhatIsKnownOfTheRest)
{
    platform::FileTags known;
    known.title = L"Known title that is longer than thirty";
    known.artist = L"Ann Lee";
    known.genre = L"jazz";
    known.year = 1999;
    known.track = 4;
    test::FakeFileSystem files;
    files.put(path, sound);
    const auto remarks = editMp3Tag(files, path, {{TagField::artist, L"千 Bob"}}, known);
    ASSERT_TRUE(remarks);
    EXPECT_THAT(*remarks, ElementsAre(HasSubstr("it says \"? Bob\"")));
    EXPECT_EQ(*files.contents(path), sound + block("Known title that is longer tha", "? Bob", "", "1999", "", 4, 8));

    known.genre = L"Krautrock";
    files.put(L"C:\\short.mp3", "ID3");
    ASSERT_TRUE(editMp3Tag(files, L"C:\\short.mp3", {{TagField::title, std::wstring(31, L't')}}, known));
    EXPECT_EQ(*files.contents(L"C:\\short.mp3"),
              "ID3" + block(std::string(30, 't'), "Ann Lee", "", "1999", "", 4, 255));
}

TEST(Mp3TagEdit, whateverFailsIsSaidAndCostsNoSound)
{
    using Operation = test::FakeFileSystem::Operation;
    const std::string old = block("Old", "", "", "", "", 1, 1);
    for (const std::string& before : {sound, sound + old}) {
        bool good = false;
        for (int after = 0; !good; ++after) {
            ASSERT_LT(after, 50) << "it never succeeds";
            test::FakeFileSystem files;
            files.put(path, before);
            files.failEverything(after);
            good = static_cast<bool>(editMp3Tag(files, path, {{TagField::title, L"New"}}, {}));
            files.endFailing();
            const std::string left = *files.contents(path);
            EXPECT_EQ(left.substr(0, sound.size()), sound) << after;
            EXPECT_TRUE(!good || left.find("New") != std::string::npos) << after;
        }
    }

    test::FakeFileSystem files;
    files.put(path, sound);
    files.capacity = static_cast<std::int64_t>(sound.size()) + 10;
    EXPECT_FALSE(editMp3Tag(files, path, {{TagField::title, L"New"}}, {}));
    EXPECT_EQ(*files.contents(path), sound) << "nothing of a block stays on a full disk";
    files.capacity = INT64_MAX;
    files.setReadOnly(path);
    EXPECT_FALSE(editMp3Tag(files, path, {{TagField::title, L"New"}}, {}));
    EXPECT_TRUE(files.isReadOnly(path));
    files.setReadOnly(path, false);
    files.fail(Operation::write, path);
    EXPECT_FALSE(editMp3Tag(files, path, {{TagField::title, L"New"}}, {}));
    EXPECT_EQ(*files.contents(path), sound);
    EXPECT_FALSE(editMp3Tag(files, L"C:\\none.mp3", {{TagField::title, L"New"}}, {}));
    EXPECT_FALSE(files.fileExists(L"C:\\none.mp3"));
}

TEST(OggTagEdit, aFieldTakesThePlaceOfTheFirstCommentThatSaysIt)
{
    const std::vector<std::string> comments{"ENCODER=x",     "Title=one", "noequals",    "TITLE=two",
                                            "Description=d", "=odd",      "PERFORMER=p", "YEAR=1990"};
    const struct {
        const char* what;
        TagChanges changes;
        std::vector<std::string> after;
    } cases[] = {
        {"nothing", {}, comments},
        {"several values become one",
         {{TagField::title, L"Ä"}},
         {"ENCODER=x", "Title=Ä", "noequals", "Description=d", "=odd", "PERFORMER=p", "YEAR=1990"}},
        {"taken away",
         {{TagField::title, L""}},
         {"ENCODER=x", "noequals", "Description=d", "=odd", "PERFORMER=p", "YEAR=1990"}},
        {"under the key that is there",
         {{TagField::comment, L"n"}, {TagField::year, L"2001"}},
         {"ENCODER=x", "Title=one", "noequals", "TITLE=two", "Description=n", "=odd", "PERFORMER=p", "YEAR=2001"}},
        {"new ones at the end",
         {{TagField::artist, L"A"}, {TagField::track, L"3"}},
         {"ENCODER=x", "Title=one", "noequals", "TITLE=two", "Description=d", "=odd", "PERFORMER=p", "YEAR=1990",
          "artist=A", "tracknumber=3"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(changedComments(comments, c.changes), c.after) << c.what;
}

TEST(FileReport, jsonIsOneHarmlessLine)
{
    FileReport report{.file = "a\n\xFF.mp3", .information = L"Size: 5\r\n"};
    report.tags.kind = platform::FileTags::Kind::mp3;
    report.tags.title = L"\x1b[31m \"Ä\" \xD800";
    report.tags.year = 2001;
    report.tags.stream = {.bitrateKbps = 128, .sampleRateHz = 44100, .channels = 2, .seconds = 61.2345};
    const std::string line = reportJson(report);
    EXPECT_EQ(line.find('\n'), std::string::npos);
    const auto json = nlohmann::json::parse(line);
    EXPECT_EQ(json["kind"], "mp3");
    EXPECT_EQ(json["info"], "Size: 5\r\n");
    EXPECT_EQ(json["fields"]["title"], "\x1b[31m \"Ä\" \uFFFD");
    EXPECT_EQ(json["fields"]["year"], "2001");
    EXPECT_EQ(json["fields"]["track"], "");
    EXPECT_EQ(json["stream"]["seconds"], 61.235);
    EXPECT_EQ(reportText(report).find('\x1b'), std::string::npos);
    EXPECT_THAT(reportText(report), HasSubstr("MP3, 128 kbps, 44100 Hz, stereo, 1:01\n"));

    const auto bad = nlohmann::json::parse(reportJson({.file = "x", .problem = "is a folder"}));
    EXPECT_EQ(bad, (nlohmann::json{{"file", "x"}, {"error", "is a folder"}}));
}

}
}
