#include "base/text.h"
#include "host/system/real_files.h"
#include "host/tags/id3v2_reader.h"
#include "support/fake_clock.h"
#include "support/fake_diagnostics.h"
#include "support/fake_dialogs.h"
#include "utility/tag_desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace tonquay::utility {
namespace {

using enum tags::FrameValueID;
using platform::Dialogs;
using testing::HasSubstr;
using testing::Not;

/// The utility on files that other programs have tagged, judged by what others then read in them.
class TagUtilityTest : public testing::Test {
protected:
    void SetUp() override
    {
        run("sox -r 44100 -n -c 2 -b 16 in.wav synth 1 sine 440 gain -6");
        run("ffmpeg -v error -f lavfi -i color=red:s=64x64 -frames:v 1 cover.jpg");
    }

    void run(const std::string& command)
    {
        const std::string line = "cd '" + real.root.path() + "' && LC_ALL=C.UTF-8 " + command;
        ASSERT_EQ(std::system(line.c_str()), 0) << line;
    }
    void open(const std::string& command)
    {
        run(command + " song.mp3");
        sound = soundOf();
        ASSERT_GT(sound.size(), 10'000U);
        ASSERT_TRUE(desk.openHost(real.root / "song.mp3"));
    }
    std::string output(const std::string& command)
    {
        run(command + " > output");
        return test::readHostFile(real.root / "output");
    }
    /// What ffprobe reads, a line each: "TAG:title=Dawn".
    std::string seen() { return output("ffprobe -v quiet -show_entries format_tags -of default=nk=0:nw=1 song.mp3"); }
    /// All behind the tag; of an old one ten bytes stay in front of it.
    std::string soundOf() const
    {
        const std::string bytes = test::readHostFile(real.root / "song.mp3");
        return bytes.substr(std::min(bytes.find("\xFF\xFB"), bytes.size()));
    }
    std::size_t decodedBytes() { return output("ffmpeg -v quiet -i song.mp3 -f s16le -").size(); }
    void edit(tags::FrameValueID id, std::wstring_view value) { desk.edit(placeOf(id), value); }
    std::wstring value(tags::FrameValueID id) const { return desk.value(placeOf(id)); }

    test::RealFiles real;
    test::FakeDiagnostics log;
    test::FakeClock clock;
    test::FakeDialogs dialogs;
    TagDesk desk{{.files = real.system, .log = log, .clock = clock, .readContents = host::readId3v2Contents}, dialogs};
    std::string sound;
};

TEST_F(TagUtilityTest, aPictureIsToldOfAndGoesWhenThatIsWanted)
{
    open("lame --quiet --id3v2-only --tt Dawn --ta Ann --tc Hey --ty 1999 --ti cover.jpg in.wav");
    EXPECT_EQ(value(title), L"Dawn");
    EXPECT_EQ(value(comment), L"Hey");
    edit(title, L"No\u00F6n");
    desk.write();
    ASSERT_EQ(dialogs.boxes.size(), 1U);
    EXPECT_THAT(dialogs.boxes[0].text, HasSubstr(L"Picture: other, image/jpeg, "));
    EXPECT_THAT(dialogs.boxes[0].text, HasSubstr(L"Encoder settings: LAME"));
    EXPECT_THAT(seen(), HasSubstr("title=Dawn\n"));
    dialogs.answers = {Dialogs::Answer::yes};
    desk.write();
    EXPECT_THAT(seen(), testing::AllOf(HasSubstr("title=Noön\n"), HasSubstr("artist=Ann\n"), HasSubstr("date=1999\n"),
                                       Not(HasSubstr("encoder"))));
    EXPECT_EQ(soundOf(), sound);
    EXPECT_EQ(value(title), L"No\u00F6n");
    edit(album, L"Light");
    desk.write();
    EXPECT_EQ(dialogs.boxes.size(), 2U) << "nothing is left that could be lost";
    EXPECT_THAT(seen(), HasSubstr("album=Light\n"));
}

TEST_F(TagUtilityTest, wideTextsStayForOthersWhileTheyAreNotTouched)
{
    open("lame --quiet --id3v2-only --id3v2-utf16 --tt '\xC3\x9Cn\xC3\xAF \xE6\x97\xA5' --ta Ann --tc '\xE6\x97\xA5' "
         "in.wav");
    EXPECT_EQ(value(title), L"\u00DCn\u00EF \u65E5");
    dialogs.answers = {Dialogs::Answer::yes, Dialogs::Answer::yes};
    edit(artist, L"B\u00F6hm");
    desk.write();
    EXPECT_THAT(seen(), HasSubstr("title=\xC3\x9Cn\xC3\xAF \xE6\x97\xA5\nTAG:artist=B\xC3\xB6hm\n"));
    edit(title, L"Dawn");
    desk.write();
    EXPECT_THAT(seen(), HasSubstr("title=Dawn\n"));
    EXPECT_EQ(soundOf(), sound);
}

TEST_F(TagUtilityTest, aTagOfVersion4IsReplacedOnlyWhenThatIsWanted)
{
    open("ffmpeg -v error -y -i in.wav -metadata title=Four -metadata date=1999 -id3v2_version 4");
    EXPECT_EQ(value(title), L"");
    edit(artist, L"Ann");
    desk.write();
    EXPECT_THAT(dialogs.boxes[0].text, HasSubstr(L"Title: Four\n"));
    EXPECT_THAT(seen(), HasSubstr("title=Four\n"));
    dialogs.answers = {Dialogs::Answer::yes};
    desk.write();
    EXPECT_THAT(seen(), testing::AllOf(HasSubstr("artist=Ann\n"), Not(HasSubstr("title="))));
    EXPECT_EQ(soundOf(), sound);
}

TEST_F(TagUtilityTest, theLengthsThatAreToldOfAreThoseThatOthersMisread)
{
    open("lame --quiet in.wav");
    edit(title, std::wstring(125, L'x'));
    edit(comment, std::wstring(121, L'y'));
    edit(webLink, L"http://x");
    EXPECT_THAT(desk.warnings(), testing::IsEmpty());
    desk.write();
    EXPECT_EQ(dialogs.boxes.size(), 0U);
    EXPECT_THAT(seen(), HasSubstr("title=" + std::string(125, 'x') + '\n'));
    EXPECT_THAT(seen(), HasSubstr("comment=" + std::string(121, 'y') + '\n'));
    edit(title, std::wstring(126, L'x'));
    dialogs.answers = {Dialogs::Answer::yes};
    desk.write();
    EXPECT_THAT(dialogs.boxes[0].text, HasSubstr(L"Title: too long for other programs by 1 letter"));
    EXPECT_EQ(value(title), std::wstring(126, L'x')) << "read here";
    EXPECT_THAT(seen(), Not(HasSubstr("comment="))) << "misread there";
    EXPECT_THAT(desk.losses(), testing::IsEmpty()) << "and nothing is lost by that";
    EXPECT_EQ(soundOf(), sound);
}

TEST_F(TagUtilityTest, whatIsNoFileIsRefusedAndNeitherMadeNorWaitedFor)
{
    run("mkfifo pipe.mp3");
    for (const char* name : {"none.mp3", "pipe.mp3", "home"}) {
        EXPECT_FALSE(desk.openHost(real.root / name));
        EXPECT_THAT(dialogs.boxes.back().text, HasSubstr(base::fromHostBytes(name)));
    }
    EXPECT_FALSE(std::filesystem::exists(real.root / "none.mp3"));
}

TEST_F(TagUtilityTest, aRemovedTagLeavesThePlainSound)
{
    open("lame --quiet --id3v2-only --tt Dawn --ti cover.jpg in.wav");
    EXPECT_EQ(decodedBytes(), 4U * 44100) << "one second";
    dialogs.answers = {Dialogs::Answer::yes};
    desk.remove();
    EXPECT_FALSE(desk.hasTag());
    EXPECT_THAT(dialogs.boxes[0].text, HasSubstr(L"silence that the encoder has put around it"));
    EXPECT_GT(decodedBytes(), 4U * 44100) << "as was said";
    EXPECT_THAT(seen(), Not(HasSubstr("title")));
    EXPECT_EQ(soundOf(), sound);
}

}
}
