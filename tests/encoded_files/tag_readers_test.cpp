#include "base/text.h"
#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "support/temp_folder.h"
#include "tags/vorbis_comments.h"
#include "tags/vorbis_fields.h"
#include "tags/vorbis_tag.h"
#include "tags/wav_info.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace tonquay::tags {
namespace {

using test::readHostFile;
using test::TempFolder;
using test::writeHostFile;

/// What the readers of the tag page see in files that other programs have made.
class TagReadersTest : public testing::Test {
protected:
    void SetUp() override { run("sox -r 44100 -n -c 2 -b 16 in.wav synth 3 sine 440 gain -6"); }

    void run(const std::string& command)
    {
        const std::string line = "cd '" + folder.path() + "' && LC_ALL=C.UTF-8 " + command;
        ASSERT_EQ(std::system(line.c_str()), 0) << line;
    }

    /// The file of the folder, where the readers find it.
    std::wstring take(const std::string& name)
    {
        files.put(L"C:\\taken", readHostFile(folder / name));
        EXPECT_NE(files.length(L"C:\\taken"), 0) << name;
        return L"C:\\taken";
    }

    TempFolder folder;
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
};

TEST_F(TagReadersTest, todaysOggFilesShowNothingOfTheirComments)
{
    const std::string ffmpeg = "ffmpeg -v error -y -i in.wav ";
    const struct {
        std::string command;
        bool commented;
    } cases[] = {
        {"oggenc -Q in.wav -o x.ogg", false},
        {"oggenc -Q -t Title -a Artist -l Album -G Rock -d 1999 -N 3 -c comment=Hi in.wav -o x.ogg", true},
        {ffmpeg + "-c:a libvorbis x.ogg", true}, // "encoder=" and the library's name
        {ffmpeg + "-c:a libvorbis -metadata title=Title -metadata artist=Artist x.ogg", true},
        {ffmpeg + "-c:a vorbis -strict experimental -metadata title=Title x.ogg", true},
        {ffmpeg + "-c:a libopus -metadata title=Title x.ogg", false},
        {ffmpeg + "-c:a flac -metadata title=Title x.ogg", false},
    };
    for (const auto& c : cases) {
        run(c.command);
        const std::wstring path = take("x.ogg");
        EXPECT_EQ(ReadVorbisTag(files, log, path), VorbisTag{}) << c.command;
        EXPECT_EQ(hasVorbisComments(files, log, path), c.commented) << c.command;
    }
}

TEST_F(TagReadersTest, anOggFileOfAnOldEncoderShowsItsComments)
{
    run("oggenc -Q -t 'Naïve title' -a Artist -l Album -G Rock -d 1999 -N 3 -c comment=Hi in.wav -o x.ogg");
    std::string bytes = readHostFile(folder / "x.ogg");
    // In the place of today's vendor text of 52 bytes an old one of 29, and a comment that fills its place.
    const std::size_t mark = bytes.find("\3vorbis\x34");
    ASSERT_NE(mark, std::string::npos);
    const std::size_t countAt = mark + 7 + 4 + 52;
    const std::string count(1, static_cast<char>(bytes[countAt] + 1));
    const std::string nuls(3, '\0');
    const std::string old = "\x1D" + nuls + "Xiph.Org libVorbis I 20050304" + count + nuls + "\x13" + nuls;
    bytes.replace(mark + 7, 4 + 52 + 4, old + "encoded_using=tests");
    files.put(L"C:\\old.ogg", bytes);
    const VorbisTag tag{.Title = L"Naïve title",
                        .Artist = L"Artist",
                        .Album = L"Album",
                        .Genre = L"Rock",
                        .Date = L"1999",
                        .Comment = L"Hi",
                        .TrackNumber = 3,
                        .EncodedUsing = L"tests"};
    EXPECT_EQ(ReadVorbisTag(files, log, L"C:\\old.ogg"), tag);
    EXPECT_TRUE(hasVorbisComments(files, log, L"C:\\old.ogg"));
}

TEST_F(TagReadersTest, theCommentsFileReplacesAllComments)
{
    run("oggenc -Q -t Old -c other=gone in.wav -o x.ogg");
    // As the adapter in the program folder hands it on.
    const auto write = [&](const TagFields& fields) {
        writeHostFile(folder / "comments.txt", base::utf8(base::replaced(commentsFileText(fields), L'\r', L' ')));
        run("sh -c \"sed -i 's/ $//' comments.txt && vorbiscomment -w -c comments.txt x.ogg && "
            "vorbiscomment -l x.ogg > listed.txt\"");
        EXPECT_EQ(readHostFile(folder / "listed.txt"), readHostFile(folder / "comments.txt"));
        return hasVorbisComments(files, log, take("x.ogg"));
    };
    EXPECT_TRUE(write({.title = L"Naïve \"title\" = \\x", .track = L"3", .comment = L"two\r\nlines"}));
    EXPECT_FALSE(write({}));
}

TEST_F(TagReadersTest, wavFilesShowTheirSound)
{
    const struct {
        std::string command;
        WavInfo info;
    } cases[] = {
        {"cp in.wav x.wav", {2, 16, L"44100", 1411200, L"529244", L"00:03"}},
        {"sox -n -r 8000 -c 1 -b 8 x.wav synth 61 sine 440", {1, 8, L"8000", 64000, L"488044", L"01:01"}},
        {"sox -n -r 11025 -c 1 -b 16 x.wav synth 2 sine 440", {1, 16, L"11025", 176400, L"44144", L"00:02"}},
        {"sox -n -r 22050 -c 2 -b 8 x.wav synth 2 sine 440", {2, 8, L"22050", 352800, L"88244", L"00:02"}},
        {"sox -n -r 48000 -c 6 -b 24 x.wav synth 1 sine 440", {6, 24, L"48000", 6912000, L"864080", L"00:01"}},
        {"sox -n -r 96000 -c 2 -b 16 x.wav synth 1 sine 440", {2, 16, L"32000", 1024000, L"384044", L"00:03"}},
    };
    for (const auto& c : cases) {
        run(c.command);
        WavInfo info;
        EXPECT_TRUE(ReadWavInfo(files, log, info, take("x.wav"))) << c.command;
        EXPECT_EQ(wavInformation(info), wavInformation(c.info)) << c.command;
        EXPECT_EQ(info.WavFileSize, c.info.WavFileSize) << c.command;
    }
}

}
}
