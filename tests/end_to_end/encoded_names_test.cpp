#include "end_to_end/foreign_readers.h"
#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::set<std::string> filesIn(const fs::path& folder)
{
    std::set<std::string> names;
    for (const auto& [name, bytes] : treeOf(folder))
        names.insert(name);
    return names;
}

std::ptrdiff_t linesOf(const std::string& text)
{
    return std::ranges::count(text, '\n');
}

}

TEST(EncodedNames, ofAllScriptsAreExactInOggAndAsFarAsBytesGoInMp3)
{
    const Sandbox box;
    DiscPlan plan{.tracks = {{.sectors = 75, .title = "Élan vital"},
                             {.sectors = 75, .title = "Чайка"},
                             {.sectors = 75, .title = "さくら №5"}},
                  .artist = "Björk & Žižek",
                  .album = "Альбом 千",
                  .genre = "Café del Mar",
                  .year = "2001",
                  .comment = "Größe: “XL” €5"};
    const fs::path disc = makeDisc(box.discs(), plan);
    const std::string folder = "Björk & Žižek/Альбом 千/";
    // Without a locale: what the encoders make of it must not depend on it.
    const Environment bare{{"LANG", "C"}, {"LC_ALL", ""}};

    const Ended ogg = box.rip(disc, {"-f", "ogg", "-s", "single"}, bare);
    EXPECT_EQ(ogg.status, 0) << ogg.all();
    EXPECT_EQ(ogg.err, "") << "Ogg files carry every genre";
    EXPECT_EQ(filesIn(box.out()),
              (std::set<std::string>{folder + "Élan vital.ogg", folder + "Чайка.ogg", folder + "さくら №5.ogg"}));
    SoundFacts facts = soundFacts(box.out() / (folder + "さくら №5.ogg"));
    EXPECT_EQ(facts["title"], "さくら №5");
    EXPECT_EQ(facts["artist"], "Björk & Žižek");
    EXPECT_EQ(facts["album"], "Альбом 千");
    EXPECT_EQ(facts["genre"], "Café del Mar");
    EXPECT_EQ(facts["comment"], "Größe: “XL” €5");
    EXPECT_EQ(facts["track"], "3");
    const Ended named = box.rip(disc, {"-f", "ogg", "--encoder", "oggenc", "-t", "1"}, bare);
    EXPECT_EQ(named.status, 0) << named.all();
    EXPECT_EQ(soundFacts(box.out() / (folder + "Élan vital.ogg"))["comment"], "Größe: “XL” €5");
    fs::remove_all(box.out());

    const Ended mp3 = box.rip(disc, {"-f", "mp3", "-s", "turbo"}, bare);
    EXPECT_EQ(mp3.status, 0) << mp3.all();
    EXPECT_EQ(linesOf(mp3.err), 1) << mp3.err;
    EXPECT_THAT(mp3.err, HasSubstr("Café del Mar"));
    const auto blocks = id3v1Facts(box.out());
    ASSERT_EQ(blocks.size(), 3u);
    // Bytes of Windows-1252, which the reader shows as Latin-1.
    const std::string artist = "Björk & \u008Ei\u009Eek";
    const std::string comment = "Größe: \u0093XL\u0094 \u00805";
    EXPECT_EQ(blocks.at(folder + "Élan vital.mp3"),
              (Id3v1Facts{"Élan vital", artist, "?????? ?", "2001", comment, "1", "0"}));
    EXPECT_EQ(blocks.at(folder + "Чайка.mp3").title, "?????");
    EXPECT_EQ(blocks.at(folder + "さくら №5.mp3").title, "??? ?5");
}

TEST(EncodedNames, nothingOfANameBecomesAnArgumentOrAPathOfItsOwn)
{
    const std::string hostile = "a\" -o \"other.ogg\" $(touch p) `touch q` ~ \x01; touch r \\";
    const std::string arrives = "a' -o 'other.ogg' $(touch p) 'touch q' - ; touch r";
    const Sandbox box;
    DiscPlan plan = plainDisc(2, 75);
    const fs::path disc = makeDisc(box.discs(), plan);
    const Arguments given{"--artist",        "-b 8 $(touch s)", "--album",        "--delete", "--title",
                          "1=-rf `x` \"y\"", "--title",         "2=two\nlines\\", "--genre",  hostile,
                          "--year",          "1999\\",          "--comment",      hostile};
    for (const char* format : {"ogg", "mp3"})
        for (const char* schedule : {"single", "batch", "turbo"}) {
            SCOPED_TRACE(std::string(format) + ' ' + schedule);
            Arguments more{"-f", format, "-s", schedule};
            more.insert(more.end(), given.begin(), given.end());
            const Ended ended = box.rip(disc, more);
            EXPECT_EQ(ended.status, 0) << ended.all();
            const std::string folder = "-b 8 $(touch s)/--delete/";
            const std::string ending = std::string(".") + format;
            EXPECT_EQ(filesIn(box.out()),
                      (std::set<std::string>{folder + "-rf 'x' 'y'" + ending, folder + "twolines" + ending}));
            EXPECT_EQ(box.strays(), "");
            SoundFacts facts = soundFacts(box.out() / (folder + "-rf 'x' 'y'" + ending));
            EXPECT_EQ(facts["title"], "-rf 'x' 'y'");
            EXPECT_EQ(facts["artist"], "-b 8 $(touch s)");
            EXPECT_EQ(facts["album"], "--delete");
            EXPECT_EQ(facts["date"], "1999");
            EXPECT_EQ(facts["comment"], format == std::string("ogg") ? arrives : arrives.substr(0, 28));
            SoundFacts second = soundFacts(box.out() / (folder + "twolines" + ending));
            EXPECT_EQ(second["title"], "twolines");
            EXPECT_EQ(second["track"], "2");
            if (format == std::string("ogg")) {
                EXPECT_EQ(second["genre"], arrives);
            } else {
                EXPECT_EQ(linesOf(ended.err), 1) << "no byte for this genre: " << ended.err;
            }
            fs::remove_all(box.out());
        }
}

TEST(EncodedNames, aSwitchLikeTitleStaysAFileForAnEncoderOfTheUsersOwn)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 75));
    // Such a batch names its WAV file bare.
    const Ended ended = box.rip(
        disc, {"-f", "ogg", "-s", "batch", "-d", "none", "--title", "1=--help", "--encoder-options", "-Q -q 1"});
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_EQ(filesIn(box.out()), std::set<std::string>{"--help.ogg"});
}

TEST(EncodedNames, genresOfTheTableEndInTheirByte)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 75));
    const struct {
        const char* genre;
        const char* byte;
        int lines;
    } cases[] = {{"Blues", "0", 0}, {"Rock & Roll", "78", 0}, {"techno", "18", 0},
                 {"Folk", "80", 0}, {"Krautrock", "0", 1},    {"Hard Rock Cafe", "79", 1}};
    for (const auto& c : cases) {
        const Ended ended = box.rip(disc, {"-f", "mp3", "--genre", c.genre});
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(linesOf(ended.err), c.lines) << ended.err;
        const auto blocks = id3v1Facts(box.out());
        ASSERT_EQ(blocks.size(), 1u);
        EXPECT_EQ(blocks.begin()->second.genre, c.byte) << c.genre;
    }
}

}
