#include "host/tags/file_tags.h"

#include "base/text.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace tonquay::host {
namespace {

using platform::FileTags;
using test::readHostFile;
using test::TempFolder;
using test::writeHostFile;
using namespace std::string_literals;

void shell(const std::string& command)
{
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

/// What a tag comes to, in one line.
std::string fields(const FileTags& tags)
{
    std::string line;
    for (const std::wstring& field : {tags.title, tags.artist, tags.album, tags.genre, tags.comment})
        line += base::utf8(field) + '|';
    return line + std::to_string(tags.year) + '|' + std::to_string(tags.track);
}

std::string number(std::size_t value, int bytes, int bits = 8)
{
    std::string text;
    for (int i = bytes - 1; i >= 0; --i)
        text += static_cast<char>(value >> (bits * i) & ((1U << bits) - 1));
    return text;
}

/// An ID3v2 tag around its frames.
std::string id3v2(int version, const std::string& frames, char flags = 0)
{
    return "ID3"s + static_cast<char>(version) + '\0' + flags + number(frames.size(), 4, 7) + frames;
}

std::string frame(int version, const std::string& name, const std::string& data, char flags = 0)
{
    if (version == 2)
        return name + number(data.size(), 3) + data;
    return name + number(data.size(), 4, version == 4 ? 7 : 8) + '\0' + flags + data;
}

std::string utf16(std::u16string_view text, bool bigEndian = false)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const std::string pair = number(unit, 2);
        bytes += bigEndian ? pair : std::string(pair.rbegin(), pair.rend());
    }
    return bytes;
}

std::string id3v1(const std::string& title, const std::string& comment, char track, char genre)
{
    std::string block = "TAG";
    const auto put = [&](std::string text, std::size_t width) {
        text.resize(width, '\0');
        block += text;
    };
    put(title, 30);
    put("Artist", 30);
    put("Album", 30);
    put("1987", 4);
    put(comment, 28);
    return block + '\0' + track + genre;
}

/// The bytes of data in the form that a packed frame wants, not made smaller: zlib, one stored block.
std::string zlibStored(const std::string& data)
{
    unsigned a = 1;
    unsigned b = 0;
    for (const char c : data) {
        a = (a + static_cast<unsigned char>(c)) % 65521;
        b = (b + a) % 65521;
    }
    const std::string length{static_cast<char>(data.size() & 255), static_cast<char>(data.size() >> 8)};
    const std::string inverse{static_cast<char>(~length[0]), static_cast<char>(~length[1])};
    return "\x78\x01\x01"s + length + inverse + data + number(b << 16 | a, 4);
}

class FileTagsTest : public testing::Test {
protected:
    void SetUp() override
    {
        shell("sox -n -r 44100 -c 2 -b 16 '" + folder / "a.wav" + "' synth 3 sine 440 sine 660 gain -6 2>/dev/null");
        shell("lame --quiet -b 128 '" + folder / "a.wav" + "' '" + folder / "a.mp3" + "'");
    }

    std::string file(const std::string& bytes) const
    {
        writeHostFile(folder / "file", bytes);
        return folder / "file";
    }

    TempFolder folder;
};

TEST_F(FileTagsTest, everyTagIsReadInItsEncoding)
{
    const std::string sound = readHostFile(folder / "a.mp3");
    const std::string bom = "\xFF\xFE";
    const std::string unicode = bom + utf16(u"Ünï 😀 日");
    const auto text = [](int version, const std::string& name, const std::string& data) {
        return id3v2(version, frame(version, name, data));
    };
    const std::string packed = "\0Packed"s;
    const struct {
        const char* what;
        std::string bytes;
        const char* fields;
    } cases[] = {
        {"no tag", sound, "|||||0|0"},
        {"2.2, UTF-16 and Latin-1",
         id3v2(2, frame(2, "TT2", "\x01" + unicode) + frame(2, "TP1", "\0B\xF6hm"s) + frame(2, "TAL", "\0Al"s) +
                      frame(2, "TYE",
                            "\0"
                            "2004"s) +
                      frame(2, "TCO", "\0(17)"s) +
                      frame(2, "TRK",
                            "\0"
                            "3/12"s) +
                      frame(2, "COM", "\0eng\0Hey"s)) +
             sound,
         "Ünï 😀 日|Böhm|Al|Rock|Hey|2004|3"},
        {"2.3, UTF-16", text(3, "TIT2", "\x01" + unicode) + sound, "Ünï 😀 日|||||0|0"},
        {"2.3, UTF-16, most significant first", text(3, "TIT2", "\x01\xFE\xFF" + utf16(u"Ünï 😀 日", true)) + sound,
         "Ünï 😀 日|||||0|0"},
        {"2.3, a half of a pair is no character", text(3, "TIT2", "\x01" + bom + utf16(u"a\xDCE9z")) + sound,
         "a\uFFFDz|||||0|0"},
        {"2.3, packed", id3v2(3, frame(3, "TIT2", number(packed.size(), 4) + zlibStored(packed), '\x80')) + sound,
         "Packed|||||0|0"},
        {"2.3, a picture before the title",
         id3v2(3, frame(3, "APIC", "\0image/png\0\3\0"s + std::string(100'000, 'x')) + frame(3, "TIT2", "\0Last"s)) +
             sound,
         "Last|||||0|0"},
        {"2.3, chapters before the title",
         id3v2(3, frame(3, "CHAP", "a\0"s + std::string(16, '\0') + frame(3, "TIT2", "\0Chapter"s)) +
                      frame(3, "TIT2", "\0Whole"s)) +
             sound,
         "Whole|||||0|0"},
        {"2.4, UTF-8", text(4, "TIT2", "\3Ünï 😀 日") + sound, "Ünï 😀 日|||||0|0"},
        {"2.4, UTF-16 without a mark", text(4, "TIT2", "\2" + utf16(u"Ünï 😀 日", true)) + sound, "Ünï 😀 日|||||0|0"},
        {"2.4, date",
         text(4, "TDRC",
              "\3"
              "2011-05-06") +
             sound,
         "|||||2011|0"},
        {"ID3v1 alone", sound + id3v1("Caf\xE9 \x80", "Hey", 7, 17), "Café €|Artist|Album|Rock|Hey|1987|7"},
        {"ID3v1 of unknown genre", sound + id3v1("T", "", 7, '\xFF'), "T|Artist|Album|||1987|7"},
        {"ID3v2 first, the rest from ID3v1", text(4, "TIT2", "\3Second") + sound + id3v1("First", "Hey", 7, 17),
         "Second|Artist|Album|Rock|Hey|1987|7"},
        {"absurd numbers",
         id3v2(3, frame(3, "TRCK",
                        "\0"
                        "4000000000"s) +
                      frame(3, "TYER",
                            "\0"
                            "99999"s)) +
             sound,
         "|||||9999|0"},
    };
    for (const auto& c : cases) {
        const auto tags = readFileTags(file(c.bytes));
        ASSERT_TRUE(tags) << c.what << ": " << describe(tags.failure());
        EXPECT_EQ(fields(*tags), c.fields) << c.what;
        EXPECT_EQ(tags->kind, FileTags::Kind::mp3) << c.what;
        EXPECT_NEAR(tags->stream.seconds, 3.05, 0.03) << c.what;
        EXPECT_TRUE(tags->stream.complete) << c.what;
    }
}

TEST_F(FileTagsTest, tagsOfOtherProgramsAreRead)
{
    const std::string wav = "'" + folder / "a.wav" + "' ";
    const struct {
        const char* what;
        std::string command;
        const char* name;
        const char* fields;
    } cases[] = {
        {"ffmpeg, 2.3",
         "ffmpeg -v error -i " + wav +
             "-metadata title='Ünï 😀' -metadata artist=Ö -metadata album=日 -metadata date=1999 "
             "-metadata genre=Polka -metadata track=3/12 -id3v2_version 3 ",
         "f3.mp3", "Ünï 😀|Ö|日|Polka||1999|3"},
        {"ffmpeg, 2.4",
         "ffmpeg -v error -i " + wav + "-metadata title='Ünï 😀' -metadata date=1999-02-03 -id3v2_version 4 ", "f4.mp3",
         "Ünï 😀|||||1999|0"},
        {"lame", "lame --quiet --id3v2-utf16 --tt 'Ünï 日' --tn 7 --ty 2001 --tc Hey --tg Rock " + wav, "l.mp3",
         "Ünï 日|||Rock|Hey|2001|7"},
        {"oggenc", "LC_ALL=C.UTF-8 oggenc -Q -t 'Ünï 😀' -a Ö -l 日 -d 1999 -G Polka -N 7 -c COMMENT=Hey " + wav + "-o ",
         "o.ogg", "Ünï 😀|Ö|日|Polka|Hey|1999|7"},
    };
    for (const auto& c : cases) {
        shell(c.command + "'" + folder / c.name + "'");
        const auto tags = readFileTags(folder / c.name);
        ASSERT_TRUE(tags) << c.what << ": " << describe(tags.failure());
        EXPECT_EQ(fields(*tags), c.fields) << c.what;
    }
}

TEST_F(FileTagsTest, streamsAreMeasured)
{
    const struct {
        const char* command;
        const char* name;
        int kbps; ///< 0: variable
        int hz;
        int channels;
        double seconds;
    } cases[] = {
        {"lame --quiet -b 320", "a.mp3", 320, 44100, 2, 3.05},
        {"lame --quiet -b 48 -a", "b.mp3", 48, 32000, 1, 3.06},
        {"lame --quiet -p -b 160", "c.mp3", 160, 44100, 2, 3.05},
        {"lame --quiet -t -b 128", "d.mp3", 128, 44100, 2, 3.05},
        {"lame --quiet -V 2", "e.mp3", 0, 44100, 2, 3.05},
        {"lame --quiet -t -V 9", "f.mp3", 0, 22050, 2, 3.07},
        {"lame --quiet --resample 8 -b 24 -a", "g.mp3", 24, 8000, 1, 3.2},
        {"oggenc -Q -q 3 -o", "h.ogg", 0, 44100, 2, 3.0},
        {"oggenc -Q -q 0 --resample 22050 --downmix -o", "i.ogg", 0, 22050, 1, 3.0},
    };
    for (const auto& c : cases) {
        const std::string out = " '" + folder / c.name + "'";
        const bool ogg = std::string_view(c.name).ends_with(".ogg");
        const std::string in = " '" + folder / "a.wav" + "'";
        shell(c.command + (ogg ? out + in : in + out));
        const auto tags = readFileTags(folder / c.name);
        ASSERT_TRUE(tags) << c.command;
        EXPECT_EQ(tags->kind, ogg ? FileTags::Kind::oggVorbis : FileTags::Kind::mp3) << c.command;
        EXPECT_EQ(tags->stream.sampleRateHz, c.hz) << c.command;
        EXPECT_EQ(tags->stream.channels, c.channels) << c.command;
        EXPECT_NEAR(tags->stream.seconds, c.seconds, ogg ? 0.001 : 0.06) << c.command;
        EXPECT_TRUE(tags->stream.complete) << c.command;
        if (c.kbps != 0)
            EXPECT_EQ(tags->stream.bitrateKbps, c.kbps) << c.command;
        else
            EXPECT_GT(tags->stream.bitrateKbps, 8) << c.command;

        const auto estimated = readFileTags(folder / c.name, platform::SoundReading::estimate);
        ASSERT_TRUE(estimated) << c.command;
        EXPECT_NEAR(estimated->stream.seconds, tags->stream.seconds, 0.01) << c.command;
        EXPECT_NEAR(estimated->stream.bitrateKbps, tags->stream.bitrateKbps, 1) << c.command;
        EXPECT_EQ(estimated->stream.channels, c.channels) << c.command;
    }
}

TEST_F(FileTagsTest, whatWasBrokenOffIsNotComplete)
{
    shell("lame --quiet -t -b 128 '" + folder / "a.wav" + "' '" + folder / "t.mp3" + "'");
    shell("oggenc -Q -o '" + folder / "a.ogg" + "' '" + folder / "a.wav" + "'");
    const std::string announced = readHostFile(folder / "a.mp3");
    const std::string plain = readHostFile(folder / "t.mp3");
    const std::string ogg = readHostFile(folder / "a.ogg");
    const std::size_t thirdFrame = plain.find("\xFF\xFB", 800);
    const struct {
        const char* what;
        std::string bytes;
        bool complete;
        double mostSeconds;
    } cases[] = {
        {"half, announced", announced.substr(0, announced.size() / 2), false, 1.55},
        {"half, announced, with a tag", announced.substr(0, announced.size() / 2) + id3v1("T", "", 1, 1), false, 1.55},
        {"one byte short", announced.substr(0, announced.size() - 1), false, 3.05},
        // Without an announcement only its length tells.
        {"whole frames, not announced", plain.substr(0, thirdFrame), true, 0.06},
        {"half, not announced", plain.substr(0, plain.size() / 2 + 11), false, 1.55},
        {"half an Ogg", ogg.substr(0, ogg.size() / 2), false, 2.5},
        {"Ogg, one byte short", ogg.substr(0, ogg.size() - 1), false, 3.0},
        {"Ogg, whole", ogg, true, 3.0},
    };
    for (const auto& c : cases) {
        const auto tags = readFileTags(file(c.bytes));
        ASSERT_TRUE(tags) << c.what;
        EXPECT_NE(tags->kind, FileTags::Kind::none) << c.what;
        EXPECT_EQ(tags->stream.complete, c.complete) << c.what;
        EXPECT_LE(tags->stream.seconds, c.mostSeconds) << c.what;
        EXPECT_LE(readFileTags(file(c.bytes), platform::SoundReading::estimate)->stream.seconds, c.mostSeconds)
            << c.what;
    }
}

/// A tag as others put it at a file's end; `head` says whether it has one.
std::string apeTag(std::size_t bytes, bool head)
{
    const auto edge = [bytes](char flags) {
        std::string size;
        for (std::size_t rest = bytes + 32, i = 0; i < 4; ++i, rest >>= 8)
            size += static_cast<char>(rest & 0xFF);
        return "APETAGEX\xD0\x07\0\0"s + size + "\1\0\0\0\0\0\0"s + flags + std::string(8, '\0');
    };
    return (head ? edge('\xA0') : "") + std::string(bytes, '\xFF') + edge('\x80');
}

TEST_F(FileTagsTest, tagsAtTheEndAreNoSound)
{
    shell("lame --quiet -t -b 128 '" + folder / "a.wav" + "' '" + folder / "t.mp3" + "'");
    const std::string plain = readHostFile(folder / "t.mp3");
    const double seconds = readFileTags(folder / "t.mp3")->stream.seconds;
    for (const std::string& end : {id3v1("T", "", 1, 1), apeTag(200'000, true), apeTag(200'000, false),
                                   apeTag(200'000, true) + id3v1("T", "", 1, 1)})
        for (const auto reading : {platform::SoundReading::whole, platform::SoundReading::estimate})
            EXPECT_NEAR(readFileTags(file(plain + end), reading)->stream.seconds, seconds, 0.01) << end.size();
    EXPECT_GT(readFileTags(file(plain + "APETAGEX"s + std::string(24, '\xFF')))->stream.seconds, seconds - 0.03)
        << "a size that reaches to the file's front";
}

TEST_F(FileTagsTest, changingBitratesAreCountedWhereNothingAnnouncesThem)
{
    shell("sox -n -r 44100 -c 2 -b 16 '" + folder / "loud.wav" + "' synth 3 whitenoise");
    for (const char* name : {"a", "loud"})
        shell("lame --quiet -t -V 4 '" + folder / (std::string(name) + ".wav") + "' '" +
              folder / (std::string(name) + "V.mp3") + "'");
    const std::string both = readHostFile(folder / "aV.mp3") + readHostFile(folder / "loudV.mp3");
    EXPECT_NEAR(readFileTags(file(both), platform::SoundReading::estimate)->stream.seconds,
                readFileTags(file(both))->stream.seconds, 0.001);
}

std::string chunk(const std::string& name, const std::string& data, std::int64_t claimed = -1)
{
    std::string size;
    for (std::size_t rest = claimed < 0 ? data.size() : static_cast<std::size_t>(claimed), i = 0; i < 4;
         ++i, rest >>= 8)
        size += static_cast<char>(rest & 0xFF);
    return name + size + data;
}

TEST_F(FileTagsTest, wavSoundIsWhatIsThere)
{
    const std::string format = chunk("fmt ", "\1\0\2\0\x44\xAC\0\0\x10\xB1\2\0\4\0\x10\0"s);
    const std::string second(176400, 'x');
    const struct {
        const char* what;
        std::string chunks;
        double seconds; ///< below 0: no sound
        bool complete;
    } cases[] = {
        {"plain", format + chunk("data", second), 1, true},
        {"other chunks around", chunk("LIST", "odd") + '\0' + format + chunk("data", second) + chunk("id3 ", second), 1,
         true},
        {"cut", format + chunk("data", second, 10'000'000), 1, false},
        {"never finished", format + chunk("data", second, 0), 1, false},
        {"no format", chunk("data", second), -1, true},
        {"no byte rate", chunk("fmt ", std::string(16, '\0')) + chunk("data", second), -1, true},
        {"no sound", format, -1, true},
        {"a chunk that claims all", chunk("junk", "", 0xFFFFFFFF) + format + chunk("data", second), -1, true},
        {"chunks of nothing", std::string(80'000, '\0') + format + chunk("data", second), -1, true},
    };
    for (const auto& c : cases) {
        const auto tags = readFileTags(file("RIFF....WAVE" + c.chunks));
        ASSERT_TRUE(tags) << c.what;
        EXPECT_EQ(tags->kind, c.seconds < 0 ? FileTags::Kind::none : FileTags::Kind::wav) << c.what;
        EXPECT_EQ(tags->stream.seconds, std::max(c.seconds, 0.0)) << c.what;
        EXPECT_EQ(tags->stream.complete, c.complete) << c.what;
    }
    const auto made = readFileTags(folder / "a.wav");
    EXPECT_EQ(made->stream.sampleRateHz, 44100);
    EXPECT_EQ(made->stream.channels, 2);
    EXPECT_EQ(made->stream.bitrateKbps, 1411);
    EXPECT_EQ(made->stream.seconds, 3);
}

TEST_F(FileTagsTest, whatIsNoFileFailsAndNeverWaits)
{
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkdir((folder / "sub").c_str(), 0700), 0);
    for (const char* name : {"none.mp3", "sub", "pipe", "a.wav/x"}) {
        const auto tags = readFileTags(folder / name);
        ASSERT_FALSE(tags) << name;
        EXPECT_FALSE(tags.failure().text.empty()) << name;
    }
}

TEST_F(FileTagsTest, otherFilesAreOfNoKind)
{
    const std::string sound = readHostFile(folder / "a.mp3");
    shell("ffmpeg -v error -i '" + folder / "a.wav" + "' -c:a flac '" + folder / "flac.ogg" + "'");
    shell("ffmpeg -v error -i '" + folder / "a.wav" + "' -c:a mp2 '" + folder / "layer2.mp2" + "'");
    std::string noise;
    for (unsigned value = 1; noise.size() < 300'000; value = value * 1664525 + 1013904223)
        noise += static_cast<char>(value >> 24);
    const struct {
        const char* what;
        std::string bytes;
    } cases[] = {
        {"empty", ""},
        {"one byte", "I"},
        {"text", "This is no music.\n"},
        {"Ogg, other sound", readHostFile(folder / "flac.ogg")},
        {"layer II", readHostFile(folder / "layer2.mp2")},
        {"noise", noise},
        {"noise of MP3 looks", "\xFF\xFB\x90\x64" + noise},
        {"one cut frame", sound.substr(0, 100)},
        {"Ogg mark alone", "OggS"},
        {"noise as Ogg", "OggS" + noise},
        {"a tag that is longer than the file", "ID3\3\0\0\x7F\x7F\x7F\x7F"s + noise},
        {"zeros", std::string(1 << 20, '\0')},
    };
    for (const auto& c : cases) {
        const auto tags = readFileTags(file(c.bytes));
        ASSERT_TRUE(tags) << c.what;
        EXPECT_EQ(tags->kind, FileTags::Kind::none) << c.what;
        EXPECT_EQ(tags->stream.seconds, 0) << c.what;
    }
    const auto tagOnly = readFileTags(file(id3v1("T", "", 7, 17)));
    ASSERT_TRUE(tagOnly);
    EXPECT_EQ(tagOnly->kind, FileTags::Kind::none);
    EXPECT_EQ(tagOnly->title, L"T");
}

/// A chapter in a chapter in a chapter; each of them costs a parser a piece of its stack.
std::string nestedChapters(int depth)
{
    std::string inner = frame(3, "TIT2", "\0Deep"s);
    // From the inside out would be quadratic, so heads are laid one before the other, sizes counted ahead.
    const std::size_t headBytes = 10 + 2 + 16;
    std::string all;
    for (int level = depth; level > 0; --level) {
        const std::size_t size = static_cast<std::size_t>(level) * headBytes - 10 + inner.size();
        all += "CHAP" + number(size, 4) + "\0\0a\0"s + std::string(16, '\0');
    }
    return all + inner;
}

TEST_F(FileTagsTest, tagsMadeToHurtAreHarmless)
{
    const std::string sound = readHostFile(folder / "a.mp3");
    std::string many;
    for (int i = 0; i < 400'000; ++i)
        many += frame(3, "TXXX", "\0"s);
    const std::string large = std::string("\0", 1) + std::string(60'000, 'x');
    const std::string packed = frame(3, "TIT2", number(large.size(), 4) + zlibStored(large), '\x80');
    std::string syncs;
    while (syncs.size() < (4u << 20))
        syncs += "\xFF\xFB\x90\x64";
    const struct {
        const char* what;
        std::string bytes;
        std::size_t titleLength;
    } cases[] = {
        {"a hundred thousand nested chapters", id3v2(3, nestedChapters(100'000)) + sound, 0},
        {"nearly half a million frames", id3v2(3, many + frame(3, "TIT2", "\0Late"s)) + sound, 0},
        {"packed frames without end", id3v2(3, packed + frame(3, "TPE1", packed.substr(10), '\x80')) + sound, 60'000},
        {"nothing but frame heads", syncs, 0},
        {"such heads between frames", sound + syncs + sound, 0},
    };
    for (const auto& c : cases) {
        const auto tags = readFileTags(file(c.bytes));
        ASSERT_TRUE(tags) << c.what;
        EXPECT_EQ(tags->title.size(), c.titleLength) << c.what;
        EXPECT_EQ(tags->artist, L"") << c.what;
    }
}

TEST_F(FileTagsTest, anOggFileWithoutSenseInItsLastPlaceHasNoLength)
{
    shell("oggenc -Q -o '" + folder / "a.ogg" + "' '" + folder / "a.wav" + "'");
    std::string bytes = readHostFile(folder / "a.ogg");
    const std::size_t lastPlace = bytes.rfind("OggS") + 6;
    bytes.replace(lastPlace, 8, "\0\0\0\0\0\0\0\x40"s);
    const auto tags = readFileTags(file(bytes));
    ASSERT_TRUE(tags);
    EXPECT_GE(tags->stream.seconds, 0);
    EXPECT_GE(tags->stream.bitrateKbps, 0);
}

TEST_F(FileTagsTest, damagedFilesAreReadToTheirEnd)
{
    shell("oggenc -Q -t Title -N 1 -o '" + folder / "a.ogg" + "' '" + folder / "a.wav" + "'");
    const std::string frames =
        frame(4, "TIT2", "\3Title") + frame(4, "COMM", "\3eng\0Hey"s) + frame(4, "TCON", "\3(17)");
    const std::string mp3 = id3v2(4, frames) + readHostFile(folder / "a.mp3") + id3v1("Title", "Hey", 7, 17);
    unsigned value = 1;
    const auto random = [&](std::size_t below) {
        value = value * 1664525 + 1013904223;
        return (value >> 8) % below;
    };
    for (const std::string& whole : {mp3, readHostFile(folder / "a.ogg")})
        for (int round = 0; round < 300; ++round) {
            std::string bytes = whole;
            const std::size_t from = round % 3 == 0 ? bytes.size() : 200;
            for (int hits = 0; hits < 8; ++hits)
                bytes[random(from)] = static_cast<char>(random(256));
            if (round % 5 == 0)
                bytes.resize(random(bytes.size()));
            EXPECT_TRUE(readFileTags(file(bytes))) << round;
        }
}

}
}
