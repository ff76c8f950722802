#include "end_to_end/foreign_readers.h"
#include "end_to_end/sandbox.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <sys/stat.h>

namespace tonquay::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

void shell(const std::string& line)
{
    ASSERT_EQ(std::system(line.c_str()), 0) << line;
}

struct Tags : testing::Test {
    Sandbox box;
    fs::path music = box.out() / "My Müsic";

    Tags()
    {
        fs::create_directories(music);
        shell("sox -n -R -r 44100 -c 2 -b 16 " + at("in.wav") + " synth 2 pluck C3 pluck E4");
        shell("lame --quiet -b 128 --id3v1-only --tt Old --ta Ann --tl Album --ty 1999 --tc note --tn 3 --tg Rock " +
              at("in.wav") + ' ' + at("one.mp3"));
        shell("lame --quiet -V 2 --id3v2-only --id3v2-utf16 --tt Dört --ta Ännchen --tn 4 --tg Jazz " + at("in.wav") +
              ' ' + at("two.mp3"));
        shell("lame --quiet -b 160 " + at("in.wav") + ' ' + at("bare.mp3"));
        shell("oggenc -Q -t Lied -a Ännchen -c 'weird=x\\y' -c 'LYRICS=one\ntwo' -c DESCRIPTION=d -o " + at("a.ogg") +
              ' ' + at("in.wav"));
    }

    std::string at(const std::string& name) const { return "'" + (music / name).string() + "'"; }
    std::string file(const std::string& name) const { return (music / name).string(); }
};

TEST_F(Tags, everyFileIsDescribedAndNoneChanged)
{
    fs::create_directories(music / "folder.mp3");
    const std::string pipe = (box.root() / "pipe.ogg").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::ofstream(music / "text.mp3") << "no music";
    const Tree before = treeOf(music);
    const Ended ended = box.run({"tags", "--json", file("one.mp3"), file("two.mp3"), file("a.ogg"), file("in.wav"),
                                 file("folder.mp3"), pipe, file("text.mp3"), file("none.mp3")});
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_EQ(difference(treeOf(music), before), "");
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    const auto json = nlohmann::json::parse(ended.out);
    ASSERT_EQ(json.size(), 8U) << ended.all();
    EXPECT_EQ(json[0]["fields"], (nlohmann::json{{"title", "Old"},
                                                 {"artist", "Ann"},
                                                 {"album", "Album"},
                                                 {"year", "1999"},
                                                 {"genre", "Rock"},
                                                 {"comment", "note"},
                                                 {"track", "3"}}));
    EXPECT_THAT(json[0]["info"].get<std::string>(), HasSubstr("Bitrate: 128 Kbps,  Frequency: 44 KHz\r\n"));
    EXPECT_EQ(json[0]["stream"]["bitrate_kbps"], 128);
    EXPECT_EQ(json[1]["fields"]["title"], "Dört");
    EXPECT_EQ(json[1]["fields"]["genre"], "Jazz");
    EXPECT_THAT(json[1]["info"].get<std::string>(), HasSubstr("ID3v2 Tag Present"));
    EXPECT_EQ(json[2]["kind"], "ogg");
    EXPECT_EQ(json[2]["fields"]["artist"], "Ännchen");
    EXPECT_THAT(json[2]["info"].get<std::string>(), HasSubstr("Type: Ogg Vorbis\r\n"));
    EXPECT_EQ(json[3]["kind"], "wav");
    EXPECT_EQ(json[3]["stream"]["seconds"], 2);
    EXPECT_THAT(json[3]["info"].get<std::string>(), HasSubstr("Play Time: 00:02\r\n"));
    for (std::size_t i = 4; i < json.size(); ++i)
        EXPECT_FALSE(json[i]["error"].get<std::string>().empty()) << i;

    const Ended text = box.run({"tags", file("two.mp3")}, {{"LC_ALL", "C"}});
    EXPECT_THAT(text.out, HasSubstr("  Title    Dört\n  Artist   Ännchen\n"));
}

TEST_F(Tags, whatIsSetIsReadByOthersAndNothingElseChanges)
{
    const auto soundOf = [this](const char* name) {
        const std::string list = file("sum");
        shell("ffmpeg -v error -i " + at(name) + " -map 0:a -c copy -f md5 - > '" + list + "'");
        return readHostFile(list);
    };
    std::map<std::string, std::string> sounds;
    for (const char* name : {"one.mp3", "two.mp3", "bare.mp3", "a.ogg"})
        sounds[name] = soundOf(name);
    ASSERT_EQ(chmod(file("a.ogg").c_str(), 0640), 0);

    const Ended ended =
        box.run({"tags", "--set", "title=Größe \"x\"", "--set", "year=2001", "--set", "track=7", "--set",
                 "comment=", file("one.mp3"), file("two.mp3"), file("bare.mp3"), file("a.ogg")});
    EXPECT_EQ(ended.status, 0) << ended.all();
    for (const auto& [name, sound] : sounds)
        EXPECT_EQ(soundOf(name.c_str()), sound) << name;
    fs::remove(music / "sum");
    EXPECT_EQ(treeOf(music).size(), 5U) << "nothing is left beside the files";

    const auto blocks = id3v1Facts(music);
    EXPECT_EQ(blocks.at("one.mp3"), (Id3v1Facts{"Größe \"x\"", "Ann", "Album", "2001", "", "7", "17"}));
    EXPECT_EQ(blocks.at("two.mp3"), (Id3v1Facts{"Größe \"x\"", "Ännchen", "", "2001", "", "7", "8"}));
    EXPECT_EQ(blocks.at("bare.mp3"), (Id3v1Facts{"Größe \"x\"", "", "", "2001", "", "7", "255"}));
    EXPECT_THAT(ended.err, HasSubstr("two.mp3: the ID3v2 tag at its start still says otherwise, and players prefer it: "
                                     "title, track\n"));

    const SoundFacts ogg = soundFacts(music / "a.ogg");
    EXPECT_EQ(ogg.at("title"), "Größe \"x\"");
    EXPECT_EQ(ogg.at("artist"), "Ännchen");
    EXPECT_EQ(ogg.at("date"), "2001");
    EXPECT_EQ(ogg.at("weird"), "x\\y");
    EXPECT_EQ(ogg.at("lyrics"), "one\ntwo");
    EXPECT_EQ(ogg.count("description") + ogg.count("comment"), 0U);
    struct stat status {};
    ASSERT_EQ(stat(file("a.ogg").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(Tags, whatCannotBeChangedIsNamedAndStays)
{
    shell("ffmpeg -v error -f lavfi -i testsrc=size=32x32:rate=5:duration=1 -i " + at("in.wav") +
          " -c:v libtheora -c:a libvorbis " + at("film.ogg"));
    fs::copy_file(music / "one.mp3", music / "locked.mp3");
    fs::permissions(music / "locked.mp3", fs::perms::owner_read);
    const std::string ogg = readHostFile(file("a.ogg"));
    std::ofstream(music / "cut.ogg", std::ios::binary) << ogg.substr(0, 3000);
    const Tree before = treeOf(music);
    const Ended ended =
        box.run({"tags", "--set", "title=New", file("film.ogg"), file("locked.mp3"), file("cut.ogg"), file("in.wav")});
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_EQ(difference(treeOf(music), before), "");
    for (const char* name : {"film.ogg", "locked.mp3", "cut.ogg", "in.wav"})
        EXPECT_THAT(ended.err, HasSubstr(file(name))) << ended.err;
    EXPECT_THAT(ended.out, IsEmpty());

    EXPECT_EQ(box.run({"tags", "--set", "genre=Krautrock", file("one.mp3")}).status, 2);
    EXPECT_EQ(difference(treeOf(music), before), "");

    writeScript(box.root() / "bin/vorbiscomment", "exit 3");
    const Ended broken = box.run({"tags", "--set", "title=New", file("a.ogg")},
                                 {{"PATH", (box.root() / "bin").string() + ":/usr/bin:/bin"}});
    EXPECT_EQ(broken.status, 1) << broken.all();
    EXPECT_THAT(broken.err, HasSubstr("status 3"));
    EXPECT_EQ(difference(treeOf(music), before), "");
}

}
}
