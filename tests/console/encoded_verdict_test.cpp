#include "console/encoded_verdict.h"

#include "console/judged_file.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>

namespace tonquay::console {
namespace {

namespace fs = std::filesystem;
using platform::FileTags;
using testing::HasSubstr;
using namespace std::chrono_literals;

/// The tag at the end of a file, as another program might write it.
std::string block(const std::string& title, int track, char filler = '\0')
{
    std::string bytes = "TAG" + title;
    bytes.resize(33, filler);
    bytes.resize(126, '\0');
    return bytes + static_cast<char>(track) + '\x11';
}

const std::string sound(1000, 's');

FileTags whatIsFound(FileTags::Kind kind, double seconds)
{
    FileTags tags;
    tags.kind = kind;
    tags.title = L"Naïve";
    tags.track = 3;
    tags.stream = {.bitrateKbps = 128, .sampleRateHz = 44100, .channels = 2, .seconds = seconds, .complete = true};
    return tags;
}

FileTags mp3(double seconds = 10.05)
{
    return whatIsFound(FileTags::Kind::mp3, seconds);
}

FileTags ogg(double seconds = 10)
{
    return whatIsFound(FileTags::Kind::oggVorbis, seconds);
}

FileTags with(FileTags tags, const std::function<void(FileTags&)>& change)
{
    change(tags);
    return tags;
}

class EncodedVerdictTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "tonquay-verdict-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        began = fileTimeNow(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    EncodedExpectation expected(Format format) const
    {
        return {.format = format, .playSeconds = 10, .runBegan = began, .title = L" Naïve ", .track = 3};
    }

    /// Of a file of these bytes of which a reader says `found`.
    EncodedVerdict judge(const std::string& bytes, const EncodedExpectation& e, const FileTags& found) const
    {
        const fs::path file = folder / "t";
        std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
        return judgeEncoded(file, e, [&](const std::string& path) -> base::Result<FileTags> {
            EXPECT_EQ(path, file);
            return found;
        });
    }

    std::string at(const char* name) const { return (folder / name).string(); }

    fs::path folder;
    std::chrono::system_clock::time_point began;
};

base::Result<FileTags> notToBeAsked(const std::string&)
{
    ADD_FAILURE() << "the reader was asked";
    return FileTags{};
}

TEST_F(EncodedVerdictTest, whatIsNoFileWithContentsIsNotRead)
{
    ASSERT_EQ(::mkdir(at("folder").c_str(), 0700), 0);
    ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
    std::ofstream empty(at("empty"));
    std::ofstream(at("old")) << "old";
    const auto yesterday = std::chrono::system_clock::to_time_t(began - 24h);
    const timespec times[2] = {{yesterday, 0}, {yesterday, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, at("old").c_str(), times, 0), 0);
    const struct {
        const char* name;
        const char* says;
    } cases[] = {
        {"missing", "was not made"}, {"folder", "a folder stands in its place"},
        {"pipe", "is no file"},      {"empty", "is empty"},
        {"old", "an older file"},
    };
    for (const auto& c : cases)
        for (const Format format : {Format::mp3, Format::ogg}) {
            const EncodedVerdict verdict = judgeEncoded(at(c.name), expected(format), notToBeAsked);
            EXPECT_FALSE(verdict.whole) << c.name;
            EXPECT_THAT(verdict.text, HasSubstr(c.says)) << c.name;
        }
}

TEST_F(EncodedVerdictTest, aFileOfTheSameMomentAsTheRunIsNew)
{
    for (int round = 0; round < 20; ++round) {
        began = fileTimeNow(folder);
        EXPECT_TRUE(judge(sound + block("Na\xEFve", 3), expected(Format::mp3), mp3()).whole);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1) << "a stamp was left behind";
}

TEST_F(EncodedVerdictTest, whereNoFileCanBeMadeAStampLiesAStepBack)
{
    const auto stamp = fileTimeNow(at("missing"));
    EXPECT_LE(stamp, std::chrono::system_clock::now() - 2s);
    EXPECT_GE(stamp, std::chrono::system_clock::now() - 10s);
}

TEST_F(EncodedVerdictTest, faultsOfTheSoundAreFound)
{
    const auto cut = [](FileTags& tags) { tags.stream.complete = false; };
    const struct {
        const char* what;
        Format format;
        FileTags found;
        const char* says;
    } cases[] = {
        {"MP3, right", Format::mp3, mp3(), ""},
        {"MP3, much padding", Format::mp3, mp3(10.2), ""},
        {"Ogg, right", Format::ogg, ogg(), ""},
        {"Ogg, cut to milliseconds", Format::ogg, ogg(9.999), ""},
        {"no sound", Format::mp3, FileTags{}, "no MP3 file"},
        {"Ogg for MP3", Format::mp3, ogg(), "no MP3 file"},
        {"MP3 for Ogg", Format::ogg, mp3(), "no Ogg Vorbis file"},
        {"MP3, half", Format::mp3, mp3(5.02), "breaks off after 5.0 of 10.0 seconds"},
        {"Ogg, half", Format::ogg, ogg(5), "breaks off after 5.0 of 10.0 seconds"},
        {"Ogg, some blocks short", Format::ogg, ogg(9.95), "breaks off"},
        {"another track's length", Format::mp3, mp3(12), "lasts 12.0 seconds, the track 10.0"},
        {"the last frame is cut", Format::mp3, with(mp3(), cut), "the end of its sound is missing"},
        {"the last page is missing", Format::ogg, with(ogg(), cut), "the end of its sound is missing"},
    };
    for (const auto& c : cases) {
        const EncodedVerdict verdict = judge(sound + block("Na\xEFve", 3), expected(c.format), c.found);
        EXPECT_EQ(verdict.whole, *c.says == '\0') << c.what << ": " << verdict.text;
        EXPECT_THAT(verdict.text, HasSubstr(c.says)) << c.what;
        EXPECT_EQ(verdict.text.empty(), verdict.whole) << c.what;
    }
}

TEST_F(EncodedVerdictTest, faultsOfTheTagAtTheEndAreFound)
{
    const std::wstring thirty = L"123456789012345678901234567890";
    const std::string thirtyBytes(thirty.begin(), thirty.end());
    const struct {
        const char* what;
        std::wstring title;
        std::string bytes;
        const char* says;
    } cases[] = {
        {"right", L"Naïve", sound + block("Na\xEFve", 3), ""},
        {"right, characters without a byte", L"日本 €", sound + block("?? \x80", 3), ""},
        {"right, of 30 characters", thirty, sound + block(thirtyBytes, 3), ""},
        {"right, no title", L"", sound + block("", 3), ""},
        {"cut", thirty + L"1", sound + block(thirtyBytes, 3), ""},
        {"cut with a mark", thirty + L"1", sound + block("123456789012345678901234567...", 3), ""},
        {"cut to nothing", thirty + L"1", sound + block("", 3), "has no title"},
        {"cut to blanks", thirty + L"1", sound + block("", 3, ' '), "has no title"},
        {"no tag", L"Naïve", sound, "no ID3v1 tag"},
        {"a new tag at the start only", L"Naïve", "ID3" + sound, "no ID3v1 tag"},
        {"a tag that does not end the file", L"Naïve", sound + block("Na\xEFve", 3) + "x", "no ID3v1 tag"},
        {"a file shorter than a tag", L"Naïve", "TAG", "no ID3v1 tag"},
        {"another track's", L"Naïve", sound + block("Other", 4), "that of track 4 instead of 3"},
        {"this title, another number", L"Naïve", sound + block("Na\xEFve", 4), "that of track 4 instead of 3"},
        {"cut, another number", thirty + L"1", sound + block(thirtyBytes, 4), "that of track 4 instead of 3"},
        {"another title", L"Naïve", sound + block("Naive", 3), "another title"},
        {"a longer title", L"Naïve", sound + block("Na\xEFvely", 3), "another title"},
        {"the title in UTF-8", L"Naïve", sound + block("Na\xC3\xAFve", 3), "another title"},
    };
    for (const auto& c : cases) {
        EncodedExpectation e = expected(Format::mp3);
        e.title = c.title;
        // What an ID3v2 tag says is right throughout, and does not help.
        const EncodedVerdict verdict = judge(c.bytes, e, with(mp3(), [&](FileTags& tags) { tags.title = c.title; }));
        EXPECT_EQ(verdict.whole, *c.says == '\0') << c.what << ": " << verdict.text;
        EXPECT_THAT(verdict.text, HasSubstr(c.says)) << c.what;
        e.tagged = false;
        EXPECT_TRUE(judge(c.bytes, e, mp3()).whole) << c.what;
    }
}

TEST_F(EncodedVerdictTest, faultsOfTheCommentsAreFound)
{
    const auto says = [](const wchar_t* title, int track) {
        return with(ogg(), [&](FileTags& tags) {
            tags.title = title;
            tags.track = track;
        });
    };
    const struct {
        const char* what;
        const wchar_t* title;
        FileTags found;
        const char* says;
    } cases[] = {
        {"right", L"日本 €", says(L"日本 €", 3), ""},
        {"right, no title", L"", says(L"", 3), ""},
        {"a byte that is no UTF-8", L"T\xDCE9", says(L"T#", 3), ""},
        {"such a title is missing", L"T\xDCE9", says(L"", 3), "has no title"},
        {"no tag", L"Naïve", says(L"", 0), "carries no tag"},
        {"another track's", L"Naïve", says(L"Other", 4), "that of track 4 instead of 3"},
        {"no number", L"Naïve", says(L"Naïve", 0), "has no track number"},
        {"characters lost", L"日本", says(L"##", 3), "another title"},
        {"a line end too many", L"Naïve", says(L"Naïve\r", 3), "another title"},
    };
    for (const auto& c : cases) {
        EncodedExpectation e = expected(Format::ogg);
        e.title = c.title;
        const EncodedVerdict verdict = judge(sound, e, c.found);
        EXPECT_EQ(verdict.whole, *c.says == '\0') << c.what << ": " << verdict.text;
        EXPECT_THAT(verdict.text, HasSubstr(c.says)) << c.what;
        e.tagged = false;
        EXPECT_TRUE(judge(sound, e, c.found).whole) << c.what;
    }
}

TEST_F(EncodedVerdictTest, whatTheReaderCannotReadIsNotWhole)
{
    std::ofstream(at("t")) << sound;
    const EncodedVerdict verdict =
        judgeEncoded(at("t"), expected(Format::mp3), [](const std::string& path) -> base::Result<FileTags> {
            return base::Failure{base::Failure::Kind::unreadable, path, "cannot be read: Input/output error"};
        });
    EXPECT_FALSE(verdict.whole);
    EXPECT_THAT(verdict.text, HasSubstr("Input/output error"));
}

}
}
