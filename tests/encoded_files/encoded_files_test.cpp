#include "console/encoded_verdict.h"
#include "console/judged_file.h"
#include "host/tags/file_tags.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace tonquay::console {
namespace {

using test::readHostFile;
using test::TempFolder;
using test::writeHostFile;

constexpr int sectorFrames = 588;

/// Tracks of one sector and of 100. What an encoder makes of them is whole, and the half of it is not.
class EncodedFilesTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const int sectors : {1, 100}) {
            // Noise makes variable bitrates vary.
            const std::string frames = std::to_string(sectors * sectorFrames);
            run("sox -r 44100 -n -c 2 -b 16 '" + wav(sectors) + "' synth " + frames + "s noise gain -6 2>/dev/null");
            ASSERT_EQ(readHostFile(wav(sectors)).size(), 44U + static_cast<std::size_t>(sectors) * sectorFrames * 4);
        }
        expected.runBegan = fileTimeNow(folder.path());
        expected.title = L"Naïve";
        expected.track = 3;
    }

    static void run(const std::string& command) { ASSERT_EQ(std::system(command.c_str()), 0) << command; }

    std::string wav(int sectors) const { return folder / std::to_string(sectors) + ".wav"; }

    EncodedVerdict judge(const std::string& bytes, Format format, int sectors)
    {
        expected.format = format;
        expected.playSeconds = sectors / 75.0;
        writeHostFile(folder / "judged", bytes);
        return judgeEncoded(folder / "judged", expected,
                            [](const std::string& path) { return host::readFileTags(path); });
    }

    void judgeLame(const std::string& switches, int sectors)
    {
        std::string tag = "TAGNa\xEFve";
        tag.resize(126, '\0');
        tag += "\x03\x11";
        run("lame --quiet " + switches + " '" + wav(sectors) + "' '" + (folder / "x.mp3") + "'");
        const std::string sound = readHostFile(folder / "x.mp3");
        const EncodedVerdict whole = judge(sound + tag, Format::mp3, sectors);
        EXPECT_TRUE(whole.whole) << switches << ", " << sectors << " sectors: " << whole.text;
        EXPECT_FALSE(judge(sound, Format::mp3, sectors).whole) << switches << ": no tag";
        EXPECT_FALSE(judge(sound.substr(0, sound.size() / 2) + tag, Format::mp3, sectors).whole)
            << switches << ", " << sectors << " sectors: half";
    }

    TempFolder folder;
    EncodedExpectation expected;
};

TEST_F(EncodedFilesTest, lameAtEveryRate)
{
    for (const int kbps : {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320})
        for (const char* switches : {"-h", "-a -h", "-V 0 -h", "-V 9 -a -h"})
            judgeLame(std::string(switches) + " -b " + std::to_string(kbps), 100);
}

TEST_F(EncodedFilesTest, lameWithOtherSwitchesAndOnTheShortestTrack)
{
    for (const char* switches : {"-h -b 32", "-h -b 320", "-a -V 9 -h -b 32"})
        judgeLame(switches, 1);
    for (const char* switches : {"-p -h -b 128", "--resample 8", "--resample 48", "--abr 100", "-t -b 160", "-t -V 4"})
        judgeLame(switches, 100);
}

TEST_F(EncodedFilesTest, oggencAtEveryQuality)
{
    for (int quality = 0; quality <= 10; ++quality)
        for (const int sectors : {1, 100}) {
            const std::string switches = "-q" + std::to_string(quality);
            run("LC_ALL=C.UTF-8 oggenc -Q " + switches + " -t Naïve -N 3 -o '" + (folder / "x.ogg") + "' '" +
                wav(sectors) + "'");
            const std::string file = readHostFile(folder / "x.ogg");
            const EncodedVerdict whole = judge(file, Format::ogg, sectors);
            EXPECT_TRUE(whole.whole) << switches << ", " << sectors << " sectors: " << whole.text;
            EXPECT_FALSE(judge(file.substr(0, file.size() / 2), Format::ogg, sectors).whole) << switches << ": half";
            EXPECT_FALSE(judge(file.substr(0, file.size() - 100), Format::ogg, sectors).whole) << switches << ": cut";
        }
}

TEST_F(EncodedFilesTest, anEncoderThatIsKilledLeavesNoWholeFile)
{
    // Raw sound by a pipe that stops: the encoder waits for more, and dies before it can finish its file.
    const std::string raw = "(head -c 200000 '" + wav(100) + "'; sleep 1)";
    run("{ " + raw + " | timeout -s KILL 0.5 lame --quiet --flush -r - '" + (folder / "x.mp3") +
        "'; } 2>/dev/null || true");
    const std::string sound = readHostFile(folder / "x.mp3");
    ASSERT_GT(sound.size(), 5000U);
    expected.tagged = false;
    const EncodedVerdict verdict = judge(sound, Format::mp3, 100);
    EXPECT_FALSE(verdict.whole);
    EXPECT_THAT(verdict.text, testing::HasSubstr("breaks off"));
}

}
}
