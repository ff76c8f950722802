#include "support/fake_host.h"
#include "tagging/automatic_tagger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::tagging {
namespace {

using controls::Form;
using state::AutoTagMode;
using state::enterDiscTags;
using state::tagDisc;
using state::tagRun;
using testing::ElementsAre;
using testing::IsEmpty;
using Box = test::FakeDialogs::Box;
using Icon = platform::Dialogs::Icon;

/// The block that a file must end in, made from scratch.
std::string blockOf(const std::string& title, const std::string& artist, const std::string& album,
                    const std::string& year, const std::string& comment, char track, char genre)
{
    std::string block = "TAG";
    const auto add = [&block](std::string text, std::size_t width) {
        text.resize(width, '\0');
        block += text;
    };
    add(title, 30);
    add(artist, 30);
    add(album, 30);
    add(year, 4);
    add(comment, 28);
    return block + '\0' + track + genre;
}

/// A disc of three tracks whose files would lie in C:\m, and the form that has not been shown.
struct Tagger : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    AutomaticTagger tagger{state, forms, platform};
    state::RipdeckControls& main = forms.ripdeck();
    state::Id3autoControls& form = forms.controlsOf<state::Id3autoControls>();

    Tagger()
    {
        state.settings.outputFolder = L"C:\\m";
        state.disc.discArtist = L"The Anns";
        state.disc.discAlbum = L"A Light";
        state.disc.discYear = L"1999";
        state.disc.discComment = L"live";
        state.disc.discGenre = L"newage";
        int track = 0;
        for (const wchar_t* title : {L"Dawn", L"Noon", L"Dusk"}) {
            state.disc.trackTitles.set(++track, title);
            main.list1.add(title);
        }
        host.files.putFolder(L"C:\\m");
    }

    void show(AutoTagMode mode)
    {
        state.flags.autoTagMode = mode;
        form.form.show();
    }

    std::string contents(const wchar_t* path) const { return host.files.contents(path).value_or("no file"); }

    static std::string tagOf(const std::string& title, char track)
    {
        return blockOf(title, "The Anns", "A Light", "1999", "live", track, 10);
    }
};

TEST_F(Tagger, showsTheDiscAndTheGenreItStandsFor)
{
    show(tagDisc);
    EXPECT_EQ(form.Text2.text.get(), L"The Anns");
    EXPECT_EQ(form.Text3.text.get(), L"A Light");
    EXPECT_EQ(form.Text4.text.get(), L"1999");
    EXPECT_EQ(form.Text5.text.get(), L"live");
    EXPECT_EQ(form.list1.rowCount(), 148);
    EXPECT_EQ(form.list1.chosen().text, L"New Age");
    EXPECT_NE(form.form.left.get(), 100000);

    form.form.unload();
    state.disc.discGenre = L"misc";
    show(tagDisc);
    EXPECT_EQ(form.list1.rowCount(), 148) << "filled afresh";
    EXPECT_EQ(form.list1.index(), -1) << "a category that stands for no genre";
}

TEST_F(Tagger, enterLeadsThroughTheFieldsToTheStartButton)
{
    using enum state::TaggerFocus;
    show(tagDisc);
    std::vector<state::TaggerFocus> way{form.focused};
    for (controls::Handler<>* key :
         {&form.Text2.enter, &form.Text3.enter, &form.Text4.enter, &form.list1.enter, &form.Text5.enter}) {
        (*key)();
        way.push_back(form.focused);
    }
    EXPECT_THAT(way, ElementsAre(artist, album, year, genre, comment, startButton));
    EXPECT_EQ(form.form.state(), Form::State::shown) << "nothing is started by it";
}

TEST_F(Tagger, runHasItsSelectedTracksTaggedWhileTheFormLoads)
{
    host.files.put(L"C:\\m\\Dawn.mp3", "one");
    host.files.put(L"C:\\m\\Noon.mp3", "two");
    host.files.put(L"C:\\m\\Track3.MP3", "three");
    main.list1.select(0, true);
    main.list1.select(2, true);
    main.form.windowState = Form::WindowState::minimised;
    main.form.enabled = false;
    std::vector<Form::State> states;
    const auto following = form.form.follow([&](const Form::State& now) { states.push_back(now); });
    std::vector<std::int32_t> places;
    const auto moving = form.form.left.follow([&](const std::int32_t& left) { places.push_back(left); });
    show(tagRun);
    EXPECT_EQ(contents(L"C:\\m\\Dawn.mp3"), "one" + tagOf("Dawn", 1));
    EXPECT_EQ(contents(L"C:\\m\\Noon.mp3"), "two") << "not selected";
    EXPECT_EQ(contents(L"C:\\m\\Track3.MP3"), "three" + tagOf("Dusk", 3));
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    EXPECT_THAT(states, ElementsAre(Form::State::loaded, Form::State::notLoaded)) << "never shown";
    EXPECT_THAT(places, ElementsAre(100000, 0)) << "out of sight, and back for the next time";
    EXPECT_EQ(state.flags.autoTagBusy, 0);
    EXPECT_EQ(main.form.windowState.get(), Form::WindowState::normal);
    EXPECT_FALSE(main.form.enabled) << "somebody else's business in this mode";
}

TEST_F(Tagger, userHasTheFilesOfAllTracksTaggedWithWhatStandsInTheFields)
{
    host.files.put(L"C:\\m\\The Anns\\Dawn.mp3", "one");
    host.files.put(L"C:\\m\\The Anns\\Dusk.mp3", "three" + blockOf("x", "y", "z", "1", "q", 9, 9));
    host.files.put(L"C:\\m\\Noon.mp3", "two");
    show(tagDisc);
    form.Text2.text = L"Bob";
    form.Text3.text = L"Night";
    form.Text4.text = L"2000";
    form.Text5.text = L"";
    form.list1.setIndex(17);
    form.Check1.setValue(1);
    form.Check2.setValue(1);
    form.Command1.press();
    EXPECT_EQ(contents(L"C:\\m\\The Anns\\Dawn.mp3"), "one" + blockOf("Dawn", "Bob", "Night", "2000", "", 1, 17))
        << "looked for by the disc's names, neither swapped nor moved";
    EXPECT_EQ(contents(L"C:\\m\\The Anns\\Dusk.mp3"), "three" + blockOf("Dusk", "Bob", "Night", "2000", "", 3, 17));
    EXPECT_EQ(contents(L"C:\\m\\Noon.mp3"), "two") << "another folder";
    EXPECT_EQ(state.disc.discArtist, L"The Anns") << "the disc keeps its names";
    EXPECT_FALSE(form.form.isLoaded());
    EXPECT_THAT(host.dialogs.boxes,
                ElementsAre(Box{L"CD-Tonquay", L"2 matching MP3 files have been found and automatically ID3 tagged.",
                                Icon::information}));
}

TEST_F(Tagger, reportsHowManyFilesWereFound)
{
    const Box none{L"CD-Tonquay",
                   L"No MP3 files found which match the audio CD in your CD-ROM drive - ID3 tagging cancelled.",
                   Icon::exclamation};
    const Box one{L"CD-Tonquay", L"1 matching MP3 file has been found and automatically ID3 tagged.",
                  Icon::information};
    struct Case {
        const char* what;
        std::function<void(test::FakeFileSystem&)> prepare;
        Box box;
    };
    const Case cases[] = {
        {"nothing", [](auto&) {}, none},
        {"a folder of the name", [](auto& files) { files.putFolder(L"C:\\m\\Noon.MP3"); }, none},
        {"one", [](auto& files) { files.put(L"C:\\m\\Dawn.MP3", "x"); }, one},
        {"one that cannot be written counts too",
         [](auto& files) {
             files.put(L"C:\\m\\Dawn.MP3", "x");
             files.fail(test::FakeFileSystem::Operation::openBinary, L"C:\\m\\Dawn.MP3");
         },
         one},
        {"one that is empty too", [](auto& files) { files.put(L"C:\\m\\Dawn.MP3", ""); }, one},
        {"two names of one track",
         [](auto& files) {
             files.put(L"C:\\m\\Dawn.MP3", "x");
             files.put(L"C:\\m\\Track1.MP3", "x");
         },
         one},
    };
    for (const Case& c : cases) {
        for (const wchar_t* path : {L"C:\\m\\Dawn.MP3", L"C:\\m\\Track1.MP3"})
            (void)host.files.remove(path);
        host.dialogs.boxes.clear();
        c.prepare(host.files);
        show(tagDisc);
        form.Command1.press();
        EXPECT_THAT(host.dialogs.boxes, ElementsAre(c.box)) << c.what;
        EXPECT_FALSE(form.form.isLoaded()) << c.what;
    }
}

TEST_F(Tagger, readOnlyFileIsTagged)
{
    host.files.put(L"C:\\m\\Noon.mp3", "two");
    host.files.setReadOnly(L"C:\\m\\Noon.mp3");
    main.list1.select(1, true);
    show(tagRun);
    EXPECT_EQ(contents(L"C:\\m\\Noon.mp3"), "two" + tagOf("Noon", 2));
}

TEST_F(Tagger, userEntersTheTagsOfTheDisc)
{
    struct Case {
        const char* what;
        std::array<const wchar_t*, 4> fields; ///< artist, album, year, comment
        bool swap;
        bool move;
        std::array<std::wstring, 4> kept;
        std::wstring shown;
    };
    const std::wstring x26(26, L'x');
    const std::wstring longName = L"The " + x26 + L"yz";
    const Case cases[] = {
        {"as they are",
         {L" The Anns ", L"Light", L" 1 ", L" live "},
         false,
         false,
         {L"The Anns", L"Light", L"1", L"live"},
         L"The Anns - Light"},
        {"no comment",
         {L"Ann", L"Light", L"", L"  "},
         false,
         false,
         {L"Ann", L"Light", L"", L"Created 09-Sep-2001"},
         L"Ann - Light"},
        {"no album", {L"Ann", L"", L"1", L"c"}, false, false, {L"Ann", L"", L"1", L"c"}, L"Ann"},
        {"swapped", {L"Ann", L"Light", L"1", L"c"}, true, false, {L"Light", L"Ann", L"1", L"c"}, L"Light - Ann"},
        {"moved",
         {L"The Anns", L"A Light", L"1", L"The c"},
         false,
         true,
         {L"Anns, The", L"Light, A", L"1", L"The c"},
         L"Anns, The - Light, A"},
        {"moved and swapped",
         {L"The Anns", L"Light", L"1", L"c"},
         true,
         true,
         {L"Light", L"Anns, The", L"1", L"c"},
         L"Light - Anns, The"},
        {"cut to the field",
         {longName.c_str(), L"Light", L"20011", L"c"},
         false,
         false,
         {L"The " + x26, L"Light", L"20011", L"c"},
         L"The " + x26 + L" - Light"},
    };
    for (const Case& c : cases) {
        main.form.enabled = false;
        main.form.windowState = Form::WindowState::minimised;
        host.files.put(L"C:\\m\\Dawn.mp3", "one");
        show(enterDiscTags);
        form.Text2.text = c.fields[0];
        form.Text3.text = c.fields[1];
        form.Text4.text = c.fields[2];
        form.Text5.text = c.fields[3];
        form.list1.setIndex(27);
        form.Check1.setValue(c.swap ? 1 : 0);
        form.Check2.setValue(c.move ? 1 : 0);
        form.Command1.press();
        EXPECT_EQ(state.disc.discArtist, c.kept[0]) << c.what;
        EXPECT_EQ(state.disc.discAlbum, c.kept[1]) << c.what;
        EXPECT_EQ(state.disc.discYear, c.kept[2]) << c.what;
        EXPECT_EQ(state.disc.discComment, c.kept[3]) << c.what;
        EXPECT_EQ(state.disc.discGenre, L"Trip-Hop") << c.what;
        EXPECT_EQ(main.Label12.caption.get(), c.shown) << c.what;
        EXPECT_EQ(main.Label6[state::commentLabel].caption.get(), c.kept[3]) << c.what;
        EXPECT_EQ(main.Label6[state::yearLabel].visible.get(), !c.kept[2].empty()) << c.what;
        EXPECT_EQ(contents(L"C:\\m\\Dawn.mp3"), "one") << c.what;
        EXPECT_THAT(host.dialogs.boxes, IsEmpty()) << c.what;
        EXPECT_FALSE(form.form.isLoaded()) << c.what;
        EXPECT_TRUE(main.form.enabled) << c.what;
        EXPECT_EQ(main.form.windowState.get(), Form::WindowState::normal) << c.what;
    }
}

TEST_F(Tagger, enteredTagsAreWhatFilesAreLookedForAndTaggedBy)
{
    host.files.put(L"C:\\m\\A Light 1.mp3", "one");
    show(enterDiscTags);
    form.Check1.setValue(1);
    form.list1.setIndex(27);
    form.Command1.press();
    main.list1.select(0, true);
    show(tagRun);
    EXPECT_EQ(contents(L"C:\\m\\A Light 1.mp3"), "one" + blockOf("Dawn", "A Light", "The Anns", "1999", "live", 1, 27));
}

TEST_F(Tagger, cancelChangesNothing)
{
    host.files.put(L"C:\\m\\Dawn.mp3", "one");
    for (const AutoTagMode mode : {enterDiscTags, tagDisc}) {
        show(mode);
        form.Text2.text = L"Bob";
        form.Check1.setValue(1);
        form.Command2.press();
        EXPECT_FALSE(form.form.isLoaded());
        EXPECT_EQ(form.Check1.value(), 0) << "as new the next time";
        EXPECT_EQ(state.disc.discArtist, L"The Anns");
        EXPECT_EQ(contents(L"C:\\m\\Dawn.mp3"), "one");
        EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    }
}

TEST_F(Tagger, runThatEndsWhileTheReportIsOpenTagsAllTheSame)
{
    host.files.put(L"C:\\m\\Dawn.mp3", "one");
    host.dialogs.whileOpen = [&] {
        host.files.put(L"C:\\m\\Noon.mp3", "two");
        main.list1.select(1, true);
        form.form.unload();
        show(tagRun);
    };
    show(tagDisc);
    form.Command1.press();
    EXPECT_EQ(contents(L"C:\\m\\Noon.mp3"), "two" + tagOf("Noon", 2));
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_FALSE(form.form.isLoaded());
}

}
}
