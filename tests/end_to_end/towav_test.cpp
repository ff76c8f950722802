#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tonquay::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

/// What a shell makes of a line, which must succeed.
void shell(const std::string& line)
{
    ASSERT_EQ(std::system(line.c_str()), 0) << line;
}

struct ToWav : testing::Test {
    Sandbox box;
    fs::path music = box.out() / "My Müsic";

    ToWav() { fs::create_directories(music); }

    /// A sound made by others: `synth` is what sox makes, `switches` how lame encodes it.
    fs::path mp3(const std::string& name, const std::string& synth, const std::string& switches) const
    {
        fs::path file = music / name;
        shell("sox -n -b 16 " + synth + " && lame --quiet " + switches + " '" + (box.root() / "in.wav").string() +
              "' '" + file.string() + "'");
        fs::remove(box.root() / "in.wav");
        return file;
    }

    std::string in() const { return "'" + (box.root() / "in.wav").string() + "'"; }

    /// The greatest difference of two decodings, sample by sample, as sox tells it: one is the other with its sign
    /// turned, and what is left is measured. Lengths must agree to the sample.
    double differenceFromFfmpeg(const fs::path& mp3File, const fs::path& wav) const
    {
        const std::string theirs = (box.out() / "theirs.wav").string();
        const std::string told = (box.out() / "told").string();
        shell("ffmpeg -v error -y -i '" + mp3File.string() + "' '" + theirs + "'");
        shell("test $(soxi -s '" + theirs + "') = $(soxi -s '" + wav.string() + "')");
        shell("sox -D -m -v 1 '" + theirs + "' -v -1 '" + wav.string() +
              "' -n stat 2>&1 | awk '/Maximum amplitude|Minimum amplitude/ {v=$3<0?-$3:$3; if(v>m) m=v} END {print m}' "
              "> '" +
              told + "'");
        double difference = 1;
        std::ifstream(told) >> difference;
        return difference;
    }
};

TEST_F(ToWav, soundIsThatOfAnotherDecoder)
{
    struct Case {
        const char* name;
        const char* synth;
        const char* switches;
    };
    const Case cases[]{
        {"plain.mp3", "-r 44100 -c 2 %s synth 3 pluck C3 pluck E4", "-b 128"},
        {"Größe  zwei.MP3", "-r 48000 -c 1 %s synth 2 sine 300-900", "-V 2 --id3v2-only --tt Titel"},
        {"low -rate.mp3", "-r 22050 -c 2 %s synth 2 pluck A3 pluck A2", "-b 64"},
    };
    Arguments arguments{"towav"};
    for (const Case& c : cases) {
        std::string synth = c.synth;
        synth.replace(synth.find("%s"), 2, in());
        arguments.push_back(mp3(c.name, synth, c.switches).string());
    }
    std::ofstream(music / "plain.wav") << "an old one";
    const Ended ended = box.run(arguments, {{"LC_ALL", "C"}});
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_EQ(ended.err, "");
    EXPECT_THAT(ended.out, AllOf(HasSubstr("/plain.wav  3.0 s\n"), HasSubstr("/Größe  zwei.wav  2.0 s\n")));
    // A bit or two of 16, since decoders round in ways of their own.
    constexpr double twoBits = 3.0 / 32768;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        fs::path wav = arguments[i];
        wav.replace_extension(".wav");
        EXPECT_LE(differenceFromFfmpeg(arguments[i], wav), twoBits) << arguments[i];
    }
    EXPECT_EQ(box.strays(), "");
}

TEST_F(ToWav, eachFileThatFailsIsNamedAndCostsNoOther)
{
    const fs::path good = mp3("good.mp3", "-r 44100 -c 2 " + in() + " synth 2 pluck C3", "-b 128");
    fs::copy_file(good, music / "GOOD.MP3");
    fs::copy_file(good, music / "five     blanks.mp3");
    fs::copy_file(good, music / "cut.mp3");
    fs::resize_file(music / "cut.mp3", fs::file_size(good) / 2);
    std::ofstream(music / "text.mp3") << "no sound at all";
    fs::create_directory(music / "folder.mp3");
    fs::copy_file(good, music / "blocked.mp3");
    fs::create_directory(music / "blocked.wav");
    Arguments arguments{"towav"};
    for (const char* name : {"gone.mp3", "text.mp3", "folder.mp3", "five     blanks.mp3", "cut.mp3", "blocked.mp3",
                             "good.mp3", "GOOD.MP3", "blocked.wav"})
        arguments.push_back((music / name).string());
    const Ended ended = box.run(arguments);
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("gone.mp3: there is no such file"), HasSubstr("text.mp3: no MP3 sound"),
                                 HasSubstr("folder.mp3: a folder"), HasSubstr("five     blanks.mp3: "),
                                 HasSubstr("cut.mp3: the MP3 file is cut short"), HasSubstr("blocked.mp3: a folder"),
                                 HasSubstr("GOOD.MP3: its WAV file would be that of "),
                                 HasSubstr("blocked.wav: its name does not end in .mp3")));
    EXPECT_THAT(ended.out, AllOf(HasSubstr("/good.wav  2.0 s\n"), testing::Not(HasSubstr("cut"))));
}

TEST_F(ToWav, decoderThatFailsOrIsMissing)
{
    const fs::path good = mp3("good.mp3", "-r 44100 -c 2 " + in() + " synth 1 pluck C3", "-b 128");
    const auto runWith = [&](const std::string& body) {
        fs::create_directories(box.root() / "bin");
        writeScript(box.root() / "bin/lame", body);
        return box.run({"towav", good.string()}, {{"PATH", (box.root() / "bin").string() + ":/bin"}});
    };
    EXPECT_THAT(runWith("test \"$1\" = --version && exit 0\nexit 3").err,
                HasSubstr("good.mp3: the decoder ended with status 3"));
    EXPECT_THAT(runWith("exit 0").err, HasSubstr("good.mp3: the file was not made"));
    std::ofstream(music / "good.wav") << "an old one";
    const Ended nothing = runWith("exit 0");
    EXPECT_EQ(nothing.status, 1);
    EXPECT_THAT(nothing.err, HasSubstr("good.mp3: the file is an older one"));
    const Ended half = runWith("test \"$1\" = --version && exit 0\nprintf half > \"$3\"");
    EXPECT_THAT(half.err, HasSubstr("good.mp3: the file ends before its header"));
    const Ended none = box.run({"towav", good.string()}, {{"PATH", box.root().string()}});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, HasSubstr("lame"));
    EXPECT_EQ(box.run({"towav"}).status, 2);
}

TEST_F(ToWav, controlCNamesWhatIsLeftAndLeavesNoHalfFile)
{
    const fs::path good = mp3("good.mp3", "-r 44100 -c 2 " + in() + " synth 1 pluck C3", "-b 128");
    fs::create_directories(box.root() / "bin");
    writeScript(box.root() / "bin/lame", "test \"$1\" = --version && exit 0\nprintf half > \"$3\"\n: > '" +
                                             (box.root() / "began").string() + "'\nexec sleep 60");
    const auto child =
        box.start({"towav", good.string()}, {{"PATH", (box.root() / "bin").string() + ":/bin:/usr/bin"}});
    ASSERT_TRUE(waitFor([&] { return fs::exists(box.root() / "began"); }));
    child->send(SIGINT);
    const Ended ended = child->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, HasSubstr("good.mp3: not converted: broken off"));
    EXPECT_FALSE(fs::exists(music / "good.wav"));
}

}
}
