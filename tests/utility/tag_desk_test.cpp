#include "utility/tag_desk.h"

#include "made_file.h"
#include "support/fake_host.h"
#include "utility/planned_tag.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::utility {
namespace {

using namespace std::string_literals;
using enum tags::FrameValueID;
using platform::Dialogs;
using test::MadeFile;
using test::zeros;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Operation = test::FakeFileSystem::Operation;
using Lines = std::vector<std::wstring>;

const std::wstring path = L"C:\\Music\\song.mp3";

struct Desk : testing::Test {
    test::FakeHost host;
    std::map<std::string, platform::Id3v2Contents> known; ///< what the reader says, by a file's bytes
    TagDesk desk{{.files = host.files,
                  .log = host.log,
                  .clock = host.clock,
                  .readContents = [this](const std::string& hostPath) { return read(hostPath); },
                  .startFolder = L"C:\\Start"},
                 host.dialogs};

    base::Result<platform::Id3v2Contents> read(const std::string& hostPath)
    {
        const auto bytes = host.files.contents(host.files.programPath(hostPath));
        if (!bytes)
            return base::Failure{base::Failure::Kind::notFound, hostPath, "cannot be opened: no such file"};
        return known[*bytes];
    }
    void put(const MadeFile& made, char flags = 0, char version = 3)
    {
        known[made.bytes(flags, version)] = made.contents;
        host.files.put(path, made.bytes(flags, version));
    }
    void openMade(const MadeFile& made, char flags = 0, char version = 3)
    {
        put(made, flags, version);
        ASSERT_TRUE(desk.open(path));
    }
    void openBytes(const std::string& bytes)
    {
        host.files.put(path, bytes);
        ASSERT_TRUE(desk.open(path));
    }
    void edit(tags::FrameValueID id, std::wstring_view value) { desk.edit(placeOf(id), value); }
    std::wstring value(tags::FrameValueID id) const { return desk.value(placeOf(id)); }
    std::string file() const { return *host.files.contents(path); }
    std::wstring asked() const { return host.dialogs.boxes.empty() ? L"" : host.dialogs.boxes.back().text; }
    void answer(Dialogs::Answer answer) { host.dialogs.answers.push_back(answer); }
};

/// Another program's frames; `size` is the size that their bytes have there.
TEST_F(Desk, whatWritingWouldLoseIsSaidFrameByFrame)
{
    const std::string wide = "\1\xFF\xFE"
                             "a\0"s;
    const std::string long200 = '\0' + std::string(199, 'x');
    const std::string long300 = '\0' + std::string(299, 'x');
    const struct {
        const char* what;
        MadeFile made;
        std::vector<std::pair<tags::FrameValueID, std::wstring>> edits;
        Lines lost;
    } cases[] = {
        {"what is shown stays",
         MadeFile().text("TIT2", "T").text("TCON", "Rock").add("TPE1", wide, {.text = L"a"}),
         {},
         {}},
        {"so does a second frame", MadeFile().text("TIT2", "T").text("TIT2", "U"), {{title, L"V"}}, {}},
        {"pictures and the like go",
         MadeFile()
             .text("TIT2", "T")
             .add("APIC", "x", {.mime = "image/png", .pictureType = 0, .dataBytes = 99})
             .text("TPE2", "B"),
         {},
         {L"Picture: other, image/png, 99 bytes", L"Album artist: B"}},
        {"a language goes",
         MadeFile().add("COMM", "\0engD\0C"s, {.language = "eng", .description = L"D", .text = L"C"}),
         {{comment, L"E"}},
         {L"Comment: its language, \"eng\""}},
        {"not without the frame",
         MadeFile().add("COMM", "\0eng\0C"s, {.language = "eng", .text = L"C"}),
         {{comment, L""}},
         {}},
        {"a language of NULs is none",
         MadeFile().add("COMM", "\0\0\0\0\0C"s, {.language = "\0\0\0"s, .text = L"C"}),
         {},
         {}},
        {"a wide description goes with a new text",
         MadeFile().add("WXXX",
                        "\1\xFF\xFE"
                        "D\0\0\0x"s,
                        {.description = L"D", .text = L"x"}),
         {{webLink, L"y"}},
         {L"User web link: its description, \"D\""}},
        {"and stays with the old one",
         MadeFile().add("WXXX",
                        "\1\xFF\xFE"
                        "D\0\0\0x"s,
                        {.description = L"D", .text = L"x"}),
         {},
         {}},
        {"200 bytes are read as they are meant", MadeFile().add("TALB", long200).text("TIT2", "T"), {}, {}},
        {"300 are not, and what follows is lost",
         MadeFile().add("TALB", long300, {.text = L"x"}).text("TIT2", "T"),
         {},
         {L"Album: x (only a part of it can be kept)", L"Title: T"}},
        {"a second one that is the same, but out of reach",
         MadeFile()
             .text("TIT2", "T")
             .add("GEOB", std::string(250, 'x'))
             .add("GEOB", std::string(250, 'x'))
             .add("GEOB", std::string(250, 'x'))
             .add("GEOB", std::string(220, 'x'))
             .text("TIT2", "T"),
         {},
         {L"Attached file: 250 bytes", L"Attached file: 250 bytes", L"Attached file: 250 bytes",
          L"Attached file: 220 bytes", L"Title: T"}},
        {"a part of what is typed anew is no loss",
         MadeFile().add("TALB", long300, {.text = L"x"}),
         {{album, L"y"}},
         {}},
        {"typed as it was",
         MadeFile().add("TALB", long300, {.text = L"x"}).text("TIT2", "T"),
         {{album, L"y"}, {title, L"T"}},
         {}},
        {"the end of what is read is byte 1,000",
         MadeFile()
             .add("GEOB", std::string(200, 'x'))
             .add("GEOB", std::string(200, 'x'))
             .add("GEOB", std::string(200, 'x'))
             .add("GEOB", std::string(200, 'x'))
             .add("GEOB", std::string(138, 'x'))
             .text("TIT2", "T")
             .text("TPE1", "A"),
         {},
         {L"Attached file: 200 bytes", L"Attached file: 200 bytes", L"Attached file: 200 bytes",
          L"Attached file: 200 bytes", L"Attached file: 138 bytes", L"Artist: A"}},
    };
    for (const auto& c : cases) {
        openMade(c.made);
        for (const auto& [id, text] : c.edits)
            edit(id, text);
        EXPECT_EQ(desk.losses(), c.lost) << c.what;
        for (std::size_t field = 0; field < fieldCount; ++field)
            desk.edit(field, L"");
        answer(Dialogs::Answer::yes);
    }
    MadeFile unread = MadeFile().text("TIT2", "T");
    unread.contents.unreadBytes = 33;
    openMade(unread);
    EXPECT_THAT(desk.losses(), ElementsAre(L"33 bytes at the end of the tag that make no sense here"));
}

TEST_F(Desk, aTagOfAnotherVersionIsLostAsAWhole)
{
    for (const char version : {'\2', '\4'}) {
        MadeFile made;
        const char* const name = version == 2 ? "TT2" : "TIT2";
        made.text(name, "T").text("TXX", "U").text(name, "T");
        openMade(made, 0, version);
        EXPECT_EQ(value(title), L"");
        EXPECT_THAT(desk.summary(), HasSubstr(version == 2 ? L"ID3v2.2 tag of" : L"ID3v2.4 tag of"));
        EXPECT_THAT(desk.losses(), ElementsAre(L"Title: T", L"User text: U", L"Title: T"));
        edit(title, L"T");
        EXPECT_THAT(desk.losses(), ElementsAre(L"User text: U", L"Title: T"));
        edit(title, L"");
    }
}

TEST_F(Desk, nothingLostIsNothingAsked)
{
    const std::string before = MadeFile().text("TIT2", "Dawn").text("TPE1", "Ann").bytes();
    openMade(MadeFile().text("TIT2", "Dawn").text("TPE1", "Ann"));
    EXPECT_EQ(desk.summary(), L"ID3v2.3 tag of 51 bytes");
    EXPECT_FALSE(desk.isEdited());
    desk.write();
    EXPECT_EQ(file(), before) << "nothing was changed";
    edit(title, L"Noon");
    edit(artist, L"");
    edit(year, L"1999");
    EXPECT_TRUE(desk.isEdited());
    desk.write();
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    const std::string frames = test::text("TIT2", "Noon") + test::text("TYER", "1999");
    EXPECT_EQ(file(), test::tag(frames + zeros(257 - frames.size())) + zeros(10) + "sound of some length");
    EXPECT_FALSE(desk.isEdited());
    EXPECT_EQ(value(title), L"Noon");
    EXPECT_EQ(value(artist), L"");
    EXPECT_EQ(host.dialogs.pointer, Dialogs::Pointer::normal);
}

TEST_F(Desk, aFileWithoutATagGetsOneAndLosesItAgain)
{
    const std::string sound = "\xFF\xFB\x90\x64\0\0sound of some length"s;
    openBytes(sound);
    EXPECT_EQ(desk.summary(), L"This file has no ID3v2 tag.");
    desk.remove();
    edit(comment, L"Hi");
    desk.write();
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    EXPECT_EQ(value(comment), L"Hi");
    known[file()] = MadeFile().add("COMM", "\0\0\0\0\0Hi\0"s, {.language = zeros(3), .text = L"Hi"}).contents;
    desk.remove();
    EXPECT_EQ(asked(), L"This would be lost:\n\u2022 Comment: Hi\n\nRemove the tag?");
    EXPECT_TRUE(desk.hasTag()) << "the answer was no";
    answer(Dialogs::Answer::yes);
    desk.remove();
    EXPECT_EQ(file(), zeros(10) + sound);
    EXPECT_FALSE(desk.hasTag());
    EXPECT_EQ(value(comment), L"");
}

TEST_F(Desk, aWideTextIsShownAsItReadsAndStaysUnlessItIsChanged)
{
    const std::string wide = "\1\xFF\xFE\xE5\x65"
                             "A\0"s;
    MadeFile made;
    made.add("TIT2", wide, {.text = L"\u65E5A"})
        .add("COMM",
             "\1\0\0\0\xFF\xFE\0\0\xFF\xFE"
             "C\0"s,
             {.text = L"C"})
        .text("TPE1", "Ann");
    openMade(made);
    EXPECT_EQ(value(title), L"\u65E5A");
    edit(artist, L"Bea");
    EXPECT_THAT(desk.warnings(), IsEmpty());
    desk.write();
    EXPECT_THAT(file(), HasSubstr(test::frame("TIT2", wide)));
    EXPECT_THAT(file(), HasSubstr(test::frame("COMM", "\1\0\0\0\xFF\xFE\0\0\xFF\xFE"
                                                      "C\0"s)));

    put(made);
    ASSERT_TRUE(desk.open(path));
    edit(title, L"A\u65E5?");
    edit(comment, L"D");
    EXPECT_THAT(desk.warnings(), ElementsAre(L"Title: a ? will stand for \u65E5"));
    answer(Dialogs::Answer::yes);
    desk.write();
    EXPECT_THAT(file(), HasSubstr(test::text("TIT2", "A??") + test::frame("COMM", "\0\0\0\0\0D\0"s)));
}

TEST_F(Desk, aPackedFrameStaysClosedUntilItIsChanged)
{
    for (const char flags : {'\x80', '\x40', '\x20'}) {
        const MadeFile made = MadeFile().add("TIT2", "\0zip"s, {}, flags).text("TPE1", "Ann");
        openMade(made);
        edit(artist, L"Bea");
        desk.write();
        EXPECT_THAT(file(), HasSubstr(test::frame("TIT2", "\0zip"s, '\0', flags)));
        edit(title, L"T");
        desk.write();
        EXPECT_THAT(file(), HasSubstr(test::text("TIT2", "T")));
    }
}

TEST_F(Desk, valuesThatOtherProgramsMisreadAreToldBeforehand)
{
    const auto x = [](std::size_t count) { return std::wstring(count, L'x'); };
    const struct {
        std::vector<std::pair<tags::FrameValueID, std::wstring>> edits;
        Lines warnings;
    } cases[] = {
        {{{title, x(125)}, {comment, x(121)}, {webLink, x(124)}, {genre, L"Caf\u00E9?"}}, {}},
        {{{title, x(126)}},
         {L"Title: too long for other programs by 1 letter; they misread it and all that follows it."}},
        {{{comment, x(140)}, {webLink, x(126)}},
         {L"Comment: too long for other programs by 19 letters; they misread it and all that follows it.",
          L"User web link: too long for other programs by 2 letters; they misread it and all that follows it."}},
        // Frames of 137, 137 and so on, in the order of the fields: the eighth would end at byte 1,096.
        {{{track, x(125)},
          {title, x(125)},
          {artist, x(125)},
          {album, x(125)},
          {year, x(125)},
          {genre, x(125)},
          {composer, x(125)},
          {copyright, x(30)}},
         {}},
        {{{track, x(125)},
          {title, x(125)},
          {artist, x(125)},
          {album, x(125)},
          {year, x(125)},
          {genre, x(125)},
          {composer, x(125)},
          {copyright, x(31)}},
         {L"Copyright: all values together are too long; this program reads a tag to its byte 1,000 only, and would "
          L"not find this again."}},
        {{{title, L"\u0142\u65E5\u0142 \u20AC\u2019"}},
         {L"Title: a ? will stand for \u0142 \u65E5",
          L"Title: other programs may show something else for \u20AC \u2019"}},
    };
    for (const auto& c : cases) {
        openBytes("\xFF\xFB\x90\x64\0\0sound"s);
        Changes changes;
        for (const auto& [id, text] : c.edits) {
            edit(id, text);
            changes[placeOf(id)] = text;
        }
        EXPECT_EQ(desk.warnings(), c.warnings) << c.edits.front().second.size();
        tags::clsID3v2 tag(host.files, host.log, host.clock);
        const std::vector<PlannedFrame> planned = plannedFrames(tag.frames(), changes);
        applyChanges(tag, changes);
        ASSERT_EQ(static_cast<std::size_t>(tag.frames().Count()), planned.size());
        for (std::size_t i = 0; i < planned.size(); ++i)
            EXPECT_EQ((*tag.frames().item(static_cast<std::int32_t>(i) + 1))->FrameSize(), planned[i].bytes);
        answer(Dialogs::Answer::yes);
    }
}

TEST_F(Desk, aTagThatOthersCannotReadIsToldBeforehand)
{
    const std::string info = "\xFF\xFB\x90\x64" + zeros(32) + "Info" + zeros(20);
    const struct {
        std::string bytes;
        const wchar_t* says; ///< in the question; null for none
    } cases[] = {
        {"\xFF\xFB\x90\x64\0\x20sound"s, nullptr},
        {"\xFF\xFB\x90\x64\0\x80sound"s, L"unsynchronised"},
        {"\xFF\xFB\x90\x64\0\xC0sound"s, L"extended header"},
        {"\xFF\xFB\x90\x64\0\x01sound"s, L"flags have no meaning"},
        {test::tag(zeros(20), 3, 0, '\x40') + "sound", L"extended header"},
        {test::tag("0123456789") + "sound", L"last ten bytes"},
        {info, nullptr},
        {test::tag(zeros(20)) + info, L"silence"},
        {test::tag(zeros(20)) + "\xFF\xFB\x90\x64" + zeros(40), nullptr},
        {test::tag(zeros(20)) + zeros(10) + info, nullptr}, // It is no news any more.
        {"RIFF\0\0\0\0WAVE"s, L"no MP3 file but a WAV file"},
        {test::tag(zeros(20)) + "OggS", L"no MP3 file but an Ogg file"},
        {"\0\0\0\0ftypM4A "s, L"no MP3 file but an MP4 file"},
    };
    for (const auto& c : cases) {
        host.dialogs.boxes.clear();
        openBytes(c.bytes);
        edit(title, L"T");
        desk.write();
        EXPECT_EQ(host.dialogs.boxes.empty(), c.says == nullptr) << c.bytes;
        if (c.says == nullptr)
            continue;
        EXPECT_THAT(asked(), HasSubstr(c.says));
        EXPECT_EQ(file(), c.bytes) << "the answer was no";
        EXPECT_TRUE(desk.isEdited());
        edit(title, value(album));
    }
    host.dialogs.boxes.clear();
    openBytes(test::tag(zeros(20), 3, 0, '\x40') + "OggS");
    desk.remove();
    EXPECT_THAT(host.dialogs.boxes, IsEmpty()) << "whatever it is, it is better off without";
    EXPECT_EQ(file(), zeros(10) + "OggS");
}

TEST_F(Desk, theQuestionListsAllAndNotMoreThanFits)
{
    MadeFile made;
    for (int i = 0; i < 20; ++i)
        made.text("TXXX", std::string(1, static_cast<char>('a' + i)));
    openMade(made, '\1');
    host.files.setReadOnly(path);
    edit(title, L"\u65E5");
    desk.write();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    const auto& box = host.dialogs.boxes[0];
    EXPECT_EQ(box.title, L"CD-Tonquay");
    EXPECT_EQ(box.buttons, Dialogs::Buttons::yesNo);
    EXPECT_THAT(box.text, testing::StartsWith(L"This file is read-only. It will be writable afterwards.\n\n"
                                              L"This would be lost:\n\u2022 User text: a\n"));
    EXPECT_THAT(box.text, HasSubstr(L"\u2022 User text: k\n\u2022 and 9 more\n\n"
                                    L"What may go wrong:\n\u2022 Title: a ? will stand for \u65E5\n"));
    EXPECT_THAT(box.text, testing::EndsWith(L"\n\nWrite the tag all the same?"));
}

TEST_F(Desk, aReadOnlyFileIsAskedForOnceAndStaysWhenTheAnswerIsNo)
{
    for (const bool removes : {false, true}) {
        MadeFile made;
        openMade(made);
        host.files.setReadOnly(path);
        host.dialogs.boxes.clear();
        const auto work = [&] {
            edit(title, removes ? L"" : L"T");
            removes ? desk.remove() : desk.write();
        };
        work();
        ASSERT_EQ(host.dialogs.boxes.size(), 1U);
        EXPECT_THAT(asked(), HasSubstr(L"read-only"));
        EXPECT_EQ(file(), made.bytes());
        EXPECT_TRUE(host.files.isReadOnly(path));
        answer(Dialogs::Answer::yes);
        work();
        EXPECT_EQ(host.dialogs.boxes.size(), 2U);
        EXPECT_NE(file(), made.bytes());
        EXPECT_FALSE(host.files.isReadOnly(path));
    }
}

TEST_F(Desk, whatFailsIsToldInFullAndLeavesTheFile)
{
    const MadeFile made = MadeFile().text("TIT2", "T").add("COMM", "\1engab"s, {.language = zeros(3), .text = L"C"});
    openMade(made);
    edit(title, L"U");
    edit(comment, L"D");
    const Lines losses = desk.losses();
    host.files.fail(Operation::replace, L"", base::Failure::Kind::full);
    desk.write();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].icon, Dialogs::Icon::exclamation);
    EXPECT_THAT(asked(), HasSubstr(L"song.mp3"));
    EXPECT_EQ(file(), made.bytes());
    EXPECT_EQ(value(title), L"U") << "what was typed is still there";
    EXPECT_TRUE(desk.isEdited());
    EXPECT_EQ(desk.losses(), losses) << "and what the file has, too";
    edit(title, L"");
    desk.write();
    edit(title, L"T");
    EXPECT_EQ(desk.losses(), losses) << "a frame that was to go is still there";
    edit(title, L"U");
    host.dialogs.boxes.resize(1);
    EXPECT_EQ(host.dialogs.pointer, Dialogs::Pointer::normal);
    host.files.heal(Operation::replace, L"");
    desk.write();
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(value(title), L"U");

    ASSERT_TRUE(host.files.remove(path));
    edit(title, L"V");
    desk.write();
    EXPECT_THAT(asked(), HasSubstr(L"no such file"));
    EXPECT_EQ(value(title), L"V");
    EXPECT_THAT(host.files.allFiles(), IsEmpty());
}

TEST_F(Desk, whatCannotBeOpenedIsToldAndMakesNoFile)
{
    openMade(MadeFile().text("TIT2", "T"));
    EXPECT_FALSE(desk.open(L"C:\\Music\\none.mp3"));
    EXPECT_THAT(asked(), HasSubstr(L"none.mp3"));
    EXPECT_EQ(value(title), L"T") << "what was open stays";
    EXPECT_EQ(desk.fileName(), "song.mp3");
    host.files.fail(Operation::openForReading, path);
    EXPECT_FALSE(desk.open(path));
    EXPECT_THAT(host.files.allFiles(), ElementsAre(path));
    EXPECT_EQ(host.dialogs.boxes.size(), 2U);
}

TEST_F(Desk, aFileThatWasChangedMeanwhileIsJudgedAsItIsNow)
{
    openMade(MadeFile().text("TIT2", "T").text("TPE1", "Ann"));
    edit(title, L"U");
    put(MadeFile().text("TIT2", "T").text("TPE1", "Bea").text("TPE2", "New"));
    desk.write();
    EXPECT_THAT(asked(), HasSubstr(L"Album artist: New"));
    answer(Dialogs::Answer::yes);
    desk.write();
    EXPECT_EQ(value(title), L"U");
    EXPECT_EQ(value(artist), L"Bea");
}

TEST_F(Desk, changesAreNotLostUnasked)
{
    put(MadeFile().text("TIT2", "T"));
    EXPECT_TRUE(desk.mayClose());
    host.dialogs.chosenFiles = {path, path, std::nullopt};
    desk.chooseFile();
    EXPECT_EQ(host.dialogs.questions[0].folder, L"C:\\Start");
    EXPECT_TRUE(desk.mayClose());
    edit(title, L"U");
    EXPECT_FALSE(desk.mayClose());
    EXPECT_EQ(asked(), L"The changes to song.mp3 are not written yet.\n\nClose and lose them?");
    desk.chooseFile();
    EXPECT_EQ(host.dialogs.questions[1].folder, L"C:\\Music\\");
    EXPECT_EQ(value(title), L"U");
    answer(Dialogs::Answer::yes);
    EXPECT_TRUE(desk.open(path));
    EXPECT_EQ(value(title), L"T");
    desk.chooseFile();
    EXPECT_EQ(host.dialogs.boxes.size(), 3U);
}

}
}
