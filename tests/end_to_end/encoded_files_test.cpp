#include "end_to_end/foreign_readers.h"
#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const std::string album = "Ann Lee/First Light/";

/// Three tracks of two seconds, with all names that a file can carry.
DiscPlan namedDisc()
{
    DiscPlan plan = plainDisc(3, 150);
    plan.genre = "Rock";
    plan.year = "1999";
    plan.comment = "Live at home";
    return plan;
}

std::set<std::string> filesIn(const fs::path& folder)
{
    std::set<std::string> names;
    for (const auto& [name, bytes] : treeOf(folder))
        names.insert(name);
    return names;
}

std::set<std::string> songs(const std::set<std::string>& endings)
{
    std::set<std::string> names;
    for (const char* song : {"Song 1", "Song 2", "Song 3"})
        for (const std::string& ending : endings)
            names.insert(album + song + ending);
    return names;
}

/// Every track's file against what ffprobe finds in it.
void expectTagged(const fs::path& out, const char* codec, const std::string& ending)
{
    for (int number = 1; number <= 3; ++number) {
        const std::string title = "Song " + std::to_string(number);
        SoundFacts facts = soundFacts(out / (album + title + ending));
        EXPECT_EQ(facts["codec"], codec) << title;
        EXPECT_NEAR(std::stod("0" + facts["seconds"]), 2.0, 0.1) << title;
        EXPECT_EQ(facts["title"], title);
        EXPECT_EQ(facts["artist"], "Ann Lee") << title;
        EXPECT_EQ(facts["album"], "First Light") << title;
        EXPECT_EQ(facts["track"], std::to_string(number)) << title;
        EXPECT_EQ(facts["date"], "1999") << title;
        EXPECT_EQ(facts["genre"], "Rock") << title;
        EXPECT_EQ(facts["comment"], "Live at home") << title;
        if (ending == ".mp3") {
            EXPECT_EQ(facts["kbps"], "128") << title;
        }
    }
}

}

TEST(Encoded, everyScheduleMakesTaggedFilesAndNothingElse)
{
    const Sandbox box;
    const DiscPlan plan = namedDisc();
    const fs::path disc = makeDisc(box.discs(), plan);
    for (const char* format : {"mp3", "ogg"})
        for (const char* schedule : {"batch", "single", "turbo"})
            for (const bool keep : {false, true}) {
                SCOPED_TRACE(std::string(format) + ' ' + schedule + (keep ? ", WAV files kept" : ""));
                Arguments more{"-f", format, "-s", schedule};
                if (keep)
                    more.emplace_back("--keep-wav");
                const Ended ended = box.rip(disc, more);
                EXPECT_EQ(ended.status, 0) << ended.all();
                EXPECT_EQ(ended.err, "");
                const std::string ending = std::string(".") + format;
                EXPECT_EQ(filesIn(box.out()),
                          songs(keep ? std::set<std::string>{ending, ".wav"} : std::set<std::string>{ending}));
                expectTagged(box.out(), format == std::string("mp3") ? "mp3" : "vorbis", ending);
                if (format == std::string("mp3")) {
                    const auto blocks = id3v1Facts(box.out());
                    std::map<std::string, Id3v1Facts> wanted;
                    for (const std::string number : {"1", "2", "3"})
                        wanted[album + "Song " + number + ".mp3"] = {"Song " + number, "Ann Lee", "First Light", "1999",
                                                                     "Live at home",   number,    "17"};
                    EXPECT_EQ(blocks, wanted);
                }
                if (keep) {
                    const Tree files = treeOf(box.out());
                    EXPECT_TRUE(files.at(album + "Song 3.wav") == ripped(plan, 2));
                }
                EXPECT_EQ(box.strays(), "");
                fs::remove_all(box.out());
            }
}

TEST(Encoded, switchesOfTheEncoderArrive)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 150));
    const fs::path mp3 = box.out() / (album + "Song 1.mp3");
    const auto factsOf = [&](const Arguments& more) {
        const Ended ended = box.rip(disc, more);
        EXPECT_EQ(ended.status, 0) << ended.all();
        return soundFacts(mp3);
    };
    const auto headerByte = [&](std::size_t at) { return std::to_integer<unsigned>(readFile(mp3)[at]); };

    EXPECT_EQ(factsOf({"-f", "mp3", "-b", "192"})["kbps"], "192");
    EXPECT_EQ(headerByte(1) & 1u, 1u) << "no checksum";
    EXPECT_EQ(factsOf({"-f", "mp3", "-b", "64", "--mono"})["channels"], "1");
    factsOf({"-f", "mp3", "--crc"});
    EXPECT_EQ(headerByte(1) & 1u, 0u) << "each frame is protected";
    EXPECT_NE(factsOf({"-f", "mp3", "--vbr", "9"})["kbps"], "128");
    EXPECT_EQ(factsOf({"-f", "mp3", "--encoder-options", "-b 96 -m m"})["kbps"], "96");
    EXPECT_EQ(soundFacts(mp3)["channels"], "1");
    EXPECT_EQ(filesIn(box.out()), std::set<std::string>{album + "Song 1.mp3"});

    const Ended quiet = box.rip(disc, {"-f", "ogg", "-b", "0"});
    EXPECT_EQ(quiet.status, 0) << quiet.all();
    const Ended loud = box.rip(disc, {"-f", "ogg", "-b", "10", "-n", "number"});
    EXPECT_EQ(loud.status, 0) << loud.all();
    EXPECT_LT(fs::file_size(box.out() / (album + "Song 1.ogg")), fs::file_size(box.out() / (album + "Track1.ogg")));
}

TEST(Encoded, everyFormOfNamesIsFoundByTheTagger)
{
    const Sandbox box;
    DiscPlan plan = namedDisc();
    plan.tracks[1].title = "B";
    const fs::path disc = makeDisc(box.discs(), plan);
    const std::vector<std::pair<const char*, std::set<std::string>>> forms{
        {"name", {"Song 1.mp3", "Track2.mp3", "Song 3.mp3"}},
        {"number", {"Track1.mp3", "Track2.mp3", "Track3.mp3"}},
        {"artist", {"Ann Lee 1.mp3", "Ann Lee 2.mp3", "Ann Lee 3.mp3"}},
        {"artist-album", {"Ann Lee - First Light 1.mp3", "Ann Lee - First Light 2.mp3", "Ann Lee - First Light 3.mp3"}},
        {"number-name", {"01 - Song 1.mp3", "02 - B.mp3", "03 - Song 3.mp3"}},
    };
    for (const auto& [form, names] : forms)
        for (const char* schedule : {"batch", "turbo"}) {
            SCOPED_TRACE(std::string(form) + ' ' + schedule);
            const Ended ended = box.rip(disc, {"-f", "mp3", "-n", form, "-d", "none", "-s", schedule});
            EXPECT_EQ(ended.status, 0) << ended.all();
            EXPECT_EQ(filesIn(box.out()), names);
            std::set<std::string> titles;
            for (const auto& [path, facts] : id3v1Facts(box.out()))
                titles.insert(facts.title + facts.track);
            EXPECT_EQ(titles, (std::set<std::string>{"Song 11", "B2", "Song 33"}));
            fs::remove_all(box.out());
        }
}

TEST(Encoded, jsonAndLinesTellOfTheEncodedFiles)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), namedDisc());
    const Ended json = box.rip(disc, {"-f", "ogg", "--json", "-t", "1,3"});
    EXPECT_EQ(json.status, 0) << json.all();
    EXPECT_THAT(json.out, HasSubstr("\"format\":\"ogg\""));
    EXPECT_THAT(json.out, HasSubstr("Song 3.ogg\",\"seconds\":2.0,"));
    EXPECT_THAT(json.out, HasSubstr("\"whole\":2,\"broken\":0,\"left\":0"));
    const Ended verbose = box.rip(disc, {"-f", "ogg", "-v", "-t", "2"});
    EXPECT_THAT(verbose.err, HasSubstr("OGGENC.EXE -q8"));
    EXPECT_THAT(verbose.err, HasSubstr("Done encoding file"));
}

}
