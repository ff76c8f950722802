#include "host/tags/id3v2_reader.h"

#include "base/text.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

#include <sys/stat.h>

namespace tonquay::host {
namespace {

using platform::Id3v2Contents;
using test::readHostFile;
using test::TempFolder;
using test::writeHostFile;
using testing::ElementsAre;
using namespace std::string_literals;

std::string number(std::size_t value, int bytes, int bits = 8)
{
    std::string text;
    for (int i = bytes - 1; i >= 0; --i)
        text += static_cast<char>(value >> (bits * i) & ((1U << bits) - 1));
    return text;
}

std::string tag(int version, const std::string& frames, char flags = 0)
{
    return "ID3"s + static_cast<char>(version) + '\0' + flags + number(frames.size(), 4, 7) + frames;
}

std::string frame(int version, const std::string& name, const std::string& body, char flags = 0)
{
    if (version == 2)
        return name + number(body.size(), 3) + body;
    return name + number(body.size(), 4, version == 4 ? 7 : 8) + '\0' + flags + body;
}

std::string utf16(const std::string& ascii)
{
    std::string bytes = "\xFF\xFE";
    for (const char c : ascii)
        bytes += std::string{c, '\0'};
    return bytes;
}

/// A frame in one line: identifier, bytes of its body, language, description, text, picture, bytes of what follows.
std::string line(const Id3v2Contents::Frame& f)
{
    std::string text = f.identifier + ' ' + std::to_string(f.bytes);
    if (!f.language.empty())
        text += " l=" + f.language;
    if (!f.description.empty())
        text += " d=" + base::utf8(f.description);
    if (!f.text.empty())
        text += " t=" + base::utf8(f.text);
    if (!f.mime.empty())
        text += " m=" + f.mime;
    if (f.pictureType >= 0)
        text += " p=" + std::to_string(f.pictureType);
    return f.dataBytes > 0 ? text + " +" + std::to_string(f.dataBytes) : text;
}

class Id3v2Reader : public testing::Test {
protected:
    Id3v2Contents read(const std::string& bytes) const
    {
        writeHostFile(folder / "file", bytes);
        const auto contents = readId3v2Contents(folder / "file");
        EXPECT_TRUE(contents);
        return contents ? *contents : Id3v2Contents{};
    }
    static std::vector<std::string> lines(const Id3v2Contents& contents)
    {
        std::vector<std::string> all;
        for (const auto& found : contents.frames)
            all.push_back(line(found));
        return all;
    }

    TempFolder folder;
};

TEST_F(Id3v2Reader, everyFrameIsToldByItsOwnNameAndInItsEncoding)
{
    const struct {
        const char* what;
        std::string frames;
        int version;
        std::vector<std::string> lines;
    } cases[] = {
        {"texts in all encodings",
         frame(3, "TIT2", "\0B\xF6hm\0x"s) + frame(3, "TPE1", "\1"s + utf16("Ann")) + frame(3, "TALB", "\2\0A\0l"s) +
             frame(4, "TCON", "\3\xC3\xB6") + frame(3, "TYER", "\x09x"s),
         3,
         {"TIT2 7 t=Böhm +1", "TPE1 9 t=Ann", "TALB 5 t=Al", "TCON 3 t=ö", "TYER 2 t=x"}},
        {"what has more fields than a text",
         frame(3, "COMM", "\0engShort\0Long"s) + frame(3, "USLT", "\1deu"s + utf16("D") + "\0\0"s + utf16("La")) +
             frame(3, "TXXX", "\0Key\0Value"s) + frame(3, "WXXX", "\0D\0http://x"s) + frame(3, "WCOM", "http://y") +
             frame(3, "PRIV", "WM/Provider\0\1\2\3"s) + frame(3, "MCDI", "abc") + frame(3, "XYZ1", "abc"),
         3,
         {"COMM 14 l=eng d=Short t=Long", "USLT 16 l=deu d=D t=La", "TXXX 10 d=Key t=Value", "WXXX 11 d=D t=http://x",
          "WCOM 8 t=http://y", "PRIV 15 d=WM/Provider +3", "MCDI 3 +3", "XYZ1 3 +3"}},
        {"a picture is as large as it is",
         frame(3, "APIC", "\0image/jpeg\0\3Cover\0"s + std::string(70'000, 'x')) + frame(3, "TIT2", "\0T"s),
         3,
         {"APIC 70019 d=Cover m=image/jpeg p=3 +70000", "TIT2 2 t=T"}},
        {"nothing is renamed or left out",
         frame(3, "TDAT",
               "\0"s
               "0102") +
             frame(3, "TSIZ",
                   "\0"s
                   "1") +
             frame(3, "TYER",
                   "\0"s
                   "1999") +
             frame(3, "TIT2", "\0a"s) + frame(3, "TIT2", "\0b"s),
         3,
         {"TDAT 5 t=0102", "TSIZ 2 t=1", "TYER 5 t=1999", "TIT2 2 t=a", "TIT2 2 t=b"}},
        {"version 2.2",
         frame(2, "TT2", "\0T"s) + frame(2, "PIC", "\0PNG\3\0xyz"s) + frame(2, "COM", "\0eng\0C"s),
         2,
         {"TT2 2 t=T", "PIC 9 m=PNG p=3 +3", "COM 6 l=eng t=C"}},
        {"version 2.4",
         frame(4, "TDRC",
               "\3"s
               "2011-05-06") +
             frame(4, "APIC", "\3image/png\0\0\0"s + std::string(300, 'x')),
         4,
         {"TDRC 11 t=2011-05-06", "APIC 313 m=image/png p=0 +300"}},
        {"packed, encrypted or grouped ones stay closed",
         frame(3, "TIT2", "\0\0\0\5abcde"s, '\x80') + frame(3, "TPE1", "\1abc"s, '\x40') +
             frame(3, "TALB", "\1\0abc"s, '\x20') + frame(3, "TCOM", "\0Last"s),
         3,
         {"TIT2 9", "TPE1 4", "TALB 5", "TCOM 5 t=Last"}},
        {"bodies that end early",
         frame(3, "COMM", "\0en"s) + frame(3, "APIC", "\1"s) + frame(3, "TXXX", "\1\xFF"s) + frame(3, "TIT2", "\1"s),
         3,
         {"COMM 3 l=en", "APIC 1 p=0", "TXXX 2", "TIT2 1"}},
    };
    for (const auto& c : cases) {
        for (const std::string& padding : {""s, std::string(300, '\0')}) {
            const Id3v2Contents contents = read(tag(c.version, c.frames + padding) + "sound");
            EXPECT_EQ(lines(contents), c.lines) << c.what;
            EXPECT_EQ(contents.unreadBytes, 0U) << c.what;
        }
    }
}

TEST_F(Id3v2Reader, theBytesOfABodyAreThereToCompare)
{
    const std::string body = "\0T\xFF\0"s + std::string(2000, 'x');
    const Id3v2Contents contents = read(tag(3, frame(3, "TIT2", "\0Abc\0"s) + frame(3, "TPE1", body)));
    ASSERT_EQ(contents.frames.size(), 2U);
    EXPECT_EQ(contents.frames[0].start, "\0Abc\0"s);
    EXPECT_EQ(contents.frames[1].bytes, 2004U);
    EXPECT_EQ(contents.frames[1].start, body.substr(0, 1024));
}

TEST_F(Id3v2Reader, extendedHeadersAndUnsynchronisationAreSeenThrough)
{
    const std::string title = frame(3, "TIT2", "\1\xFF\xFE\xFF\0"s);
    const std::string spread = frame(3, "TIT2", "\1\xFF\xFE\xFF\0"s).substr(0, 10) + "\1\xFF\0\xFE\xFF\0\0"s;
    EXPECT_THAT(lines(read(tag(3, spread + std::string(10, '\0'), '\x80'))), ElementsAre("TIT2 5 t=ÿ"));
    EXPECT_THAT(lines(read(tag(3, number(6, 4) + std::string(6, '\0') + title, '\x40'))), ElementsAre("TIT2 5 t=ÿ"));
    EXPECT_THAT(lines(read(tag(4, number(6, 4) + "\1\0"s + frame(4, "TIT2", "\3T"), '\x40'))),
                ElementsAre("TIT2 2 t=T"));
    for (const std::string& size : {"\0\0\0\0"s, "\xFF\xFF\xFF\xFF"s, "\x7F\x7F\x7F\x7F"s, ""s})
        EXPECT_TRUE(read(tag(3, size, '\x40')).frames.empty());
}

TEST_F(Id3v2Reader, theSizesOfThisSuiteAreTakenAsTheyAreMeant)
{
    const std::string own = "COMM" + number(138, 4, 7) + "\0\0"s + "\0\0\0\0\0"s + std::string(132, 'c') + '\0';
    const std::string composer = frame(3, "TCOM", "\0Ann\0"s);
    for (const std::size_t padding : {0UL, 100UL, 300UL}) {
        const Id3v2Contents contents = read(tag(3, own + composer + std::string(padding, '\0')));
        ASSERT_EQ(contents.frames.size(), 2U) << padding;
        EXPECT_EQ(contents.frames[0].bytes, 138U);
        EXPECT_EQ(contents.frames[1].text, L"Ann");
        EXPECT_EQ(contents.unreadBytes, 0U);
    }
    for (const std::size_t size : {128UL, 200UL, 256UL, 300UL}) {
        const std::string foreign = frame(3, "TIT2", '\0' + std::string(size - 1, 'X')) + composer;
        const Id3v2Contents contents = read(tag(3, foreign + std::string(300, '\0')));
        ASSERT_EQ(contents.frames.size(), 2U) << size;
        EXPECT_EQ(contents.frames[0].bytes, size);
        EXPECT_EQ(contents.unreadBytes, 0U);
    }
}

TEST_F(Id3v2Reader, whatCannotBeReadIsCounted)
{
    const std::string title = frame(3, "TIT2", "\0T"s);
    const struct {
        const char* what;
        std::string bytes;
        std::size_t frames, unread;
    } cases[] = {
        {"no tag", "sound of some length", 0, 0},
        {"empty", "", 0, 0},
        {"less than a header", "ID3\3\0\0\0", 0, 0},
        {"a tag of nothing", tag(3, ""), 0, 0},
        {"no identifier", tag(3, title + "abcd" + std::string(20, 'x')), 1, 24},
        {"a frame that is longer than the tag", tag(3, title + "TPE1" + number(99, 4) + "\0\0\0abc"s), 1, 14},
        {"a frame of nothing", tag(3, title + frame(3, "TPE1", "") + title), 1, 22},
        {"a tag that is longer than the file", tag(3, title + std::string(20, 'x')).substr(0, 30), 1, 8},
        {"a byte in the padding", tag(3, title + std::string(50, '\0') + "x" + std::string(9, '\0')), 1, 60},
    };
    for (const auto& c : cases) {
        const Id3v2Contents contents = read(c.bytes);
        EXPECT_EQ(contents.frames.size(), c.frames) << c.what;
        EXPECT_EQ(contents.unreadBytes, c.unread) << c.what;
    }
}

TEST_F(Id3v2Reader, tagsMadeToHurtAreHarmless)
{
    std::string many;
    for (int i = 0; i < 400'000; ++i)
        many += frame(3, "TXXX", "\0"s);
    const Id3v2Contents contents = read(tag(3, many));
    EXPECT_EQ(contents.frames.size(), 1000U);
    EXPECT_EQ(contents.unreadBytes, many.size() - 1000 * 11);

    unsigned value = 1;
    const auto random = [&](std::size_t below) {
        value = value * 1664525 + 1013904223;
        return (value >> 8) % below;
    };
    for (int round = 0; round < 500; ++round) {
        const int version = 2 + round % 3;
        const std::string names[] = {version == 2 ? "PIC" : "APIC", version == 2 ? "COM" : "COMM",
                                     version == 2 ? "TT2" : "TIT2"};
        std::string bytes;
        for (const std::string& name : names)
            bytes += frame(version, name, "\1eng"s + utf16("abc") + "\0\0"s + utf16("def"));
        bytes = tag(version, bytes + std::string(20, '\0'));
        for (int hits = 0; hits < 6; ++hits)
            bytes[3 + random(bytes.size() - 3)] = static_cast<char>(random(256));
        if (round % 5 == 0)
            bytes.resize(random(bytes.size()));
        for (const auto& found : read(bytes).frames)
            EXPECT_LE(found.start.size(), Id3v2Contents::startBytes);
    }
}

TEST_F(Id3v2Reader, whatIsNoFileFailsAndNeverWaits)
{
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::string& path : {folder / "none.mp3", folder / "pipe", folder.path(), "/dev/zero"s, ""s}) {
        const auto contents = readId3v2Contents(path);
        ASSERT_FALSE(contents) << path;
        EXPECT_FALSE(contents.failure().text.empty()) << path;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "none.mp3"));
}

TEST_F(Id3v2Reader, tagsOfOtherProgramsAreRead)
{
    const std::string wav = "'" + folder / "a.wav" + "' ";
    const std::string cover = "'" + folder / "cover.jpg" + "' ";
    const auto shell = [](const std::string& command) { ASSERT_EQ(std::system(command.c_str()), 0) << command; };
    shell("sox -n -r 44100 -c 2 -b 16 " + wav + "synth 1 sine 440 gain -6 2>/dev/null");
    shell("ffmpeg -v error -f lavfi -i color=red:s=32x32 -frames:v 1 " + cover);
    shell("lame --quiet --id3v2-only --id3v2-utf16 --tt 'Ünï 日' --tc Hey --ti " + cover + wav + "'" +
          folder / "l.mp3'");
    const auto contents = readId3v2Contents(folder / "l.mp3");
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->unreadBytes, 0U);
    std::string all;
    for (const auto& found : contents->frames)
        all += line(found) + '\n';
    EXPECT_THAT(all, testing::HasSubstr("TIT2 13 t=Ünï 日\n"));
    EXPECT_THAT(all, testing::HasSubstr("t=Hey\n"));
    EXPECT_THAT(all,
                testing::HasSubstr(" m=image/jpeg p=0 +" + std::to_string(readHostFile(folder / "cover.jpg").size())));
}

}
}
