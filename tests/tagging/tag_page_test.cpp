#include "tagging/tag_page.h"

#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::tagging {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string filled(std::string text, std::size_t width)
{
    text.resize(width, '\0');
    return text;
}

/// Sound of one frame and an ID3v1 tag: "Dawn" by "Ann" on "Light", 1999, "said", track 7, genre 17 (Rock).
std::string taggedMp3()
{
    const std::string frame = std::string("\xFF\xFB\x90\x64", 4) + std::string(413, 'x');
    return frame + "TAG" + filled("Dawn", 30) + filled("Ann", 30) + filled("Light", 30) + "1999" + filled("said", 28) +
           std::string("\0\7\21", 3);
}

struct Page : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    TagPage tagPage{state, forms, platform};
    state::CdriptabControls& setup = forms.controlsOf<state::CdriptabControls>();
    state::TagPageControls& page = setup.tagPage;

    Page()
    {
        state.folders.appFolder = L"C:\\CDTONQUAY";
        state.settings.outputFolder = L"C:\\Music";
        host.files.put(L"C:\\Music\\song.mp3", taggedMp3());
        host.files.put(L"C:\\Music\\TWO.OGG", "nothing that is known");
        host.files.put(L"C:\\Music\\three.Wav", "RIFF");
        host.files.put(L"C:\\Music\\cover.jpg", "");
        host.files.put(L"C:\\Music\\mp3", "no ending");
        tagPage.load();
    }

    void select(std::wstring_view name)
    {
        page.List55.deselectAll();
        for (std::int32_t row = 0; row < page.List55.rowCount(); ++row)
            if (page.List55.row(row) == name)
                page.List55.select(row, true);
        page.List55.click();
    }

    static void type(controls::TextBox& box, std::wstring text)
    {
        box.keyDown();
        box.text = std::move(text);
    }

    std::string tagOf(std::wstring_view path)
    {
        const std::string bytes = host.files.contents(path).value_or("");
        return bytes.size() < 128 ? "" : bytes.substr(bytes.size() - 128);
    }
};

TEST_F(Page, listsTheFilesThatItKnowsAndFollowsTheFolder)
{
    std::vector<std::wstring> names;
    for (std::int32_t row = 0; row < page.List55.rowCount(); ++row)
        names.push_back(page.List55.row(row));
    EXPECT_THAT(names, ElementsAre(L"song.mp3", L"three.Wav", L"TWO.OGG"));
    EXPECT_EQ(page.genlist1.rows.get().size(), 148U);
    page.Text8.text = L"left over";
    host.files.put(L"C:\\Other\\a.mp3", "");
    page.dir2.open(L"C:\\Other");
    EXPECT_EQ(page.List55.rowCount(), 1);
    EXPECT_EQ(page.Text8.text.get(), L"");
}

TEST_F(Page, showsWhatAnMp3FileHolds)
{
    select(L"song.mp3");
    EXPECT_EQ(state.TagFilePath, L"C:\\Music\\song.mp3");
    EXPECT_EQ(page.Text8.text.get(), L"Dawn");
    EXPECT_EQ(page.Text7.text.get(), L"Ann");
    EXPECT_EQ(page.Text6.text.get(), L"Light");
    EXPECT_EQ(page.Text4.text.get(), L"1999");
    EXPECT_EQ(page.Text5.text.get(), L"said");
    EXPECT_EQ(page.Text10.text.get(), L"7");
    EXPECT_EQ(page.genlist1.text.get(), L"Rock");
    EXPECT_THAT(page.Label10.caption.get(),
                testing::StartsWith(L"Size: 545 bytes,  Date: Sep-9-2001 3:05pm\r\nType: MPEG 1.0 Layer 3\r\n"));
    host.files.put(L"C:\\Music\\song.mp3", "");
    select(L"song.mp3");
    EXPECT_EQ(page.Label10.caption.get(), L"Corrupt file");
    EXPECT_EQ(page.Text8.text.get(), L"");
}

TEST_F(Page, saveWritesOnlyWhatWasChangedByHand)
{
    select(L"song.mp3");
    const std::string before = *host.files.contents(L"C:\\Music\\song.mp3");
    page.Text8.text = L"Dusk";
    page.Command4.press();
    EXPECT_EQ(host.files.contents(L"C:\\Music\\song.mp3"), before) << "no key was pressed in a field";
    type(page.Text8, L"The Dusk");
    type(page.Text4, L"2001");
    page.Command4.press();
    const std::string tag = tagOf(L"C:\\Music\\song.mp3");
    EXPECT_EQ(tag, "TAG" + filled("The Dusk", 30) + filled("Ann", 30) + filled("Light", 30) + "2001" +
                       filled("said", 28) + std::string("\0\7\21", 3));
    EXPECT_EQ(host.files.contents(L"C:\\Music\\song.mp3")->substr(0, 417), before.substr(0, 417));

    // The tick of the settings page decides about articles, not the one of this page.
    setup.riptofile[state::mp3Format].setValue(1);
    page.Check10.setValue(1);
    page.Command4.press();
    EXPECT_EQ(tagOf(L"C:\\Music\\song.mp3").substr(3, 60), filled("Ann", 30) + filled("Dusk, The", 30));
    page.Command4.press();
    EXPECT_EQ(tagOf(L"C:\\Music\\song.mp3").substr(3, 60), filled("Dusk, The", 30) + filled("Ann", 30)) << "and back";
}

TEST_F(Page, copyPasteClearAndRevert)
{
    select(L"song.mp3");
    page.Command5.press();
    EXPECT_THAT(state.TagClipboard, ElementsAre(L"Dawn", L"Ann", L"Light", L"said", L"1999", L"Rock", L"7"));
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, L"Tag Information Copied");
    page.Command3.press();
    EXPECT_EQ(page.Text8.text.get() + page.genlist1.text.get() + page.Text10.text.get(), L"");
    page.Command2.press();
    EXPECT_EQ(page.Text8.text.get(), L"Dawn");
    host.files.put(L"C:\\Music\\song.mp3", std::string(500, 'x'));
    page.Command6.press();
    page.Command4.press();
    EXPECT_EQ(tagOf(L"C:\\Music\\song.mp3"), taggedMp3().substr(417)) << "what is pasted counts as changed";
}

TEST_F(Page, enterLeadsThroughTheFieldsAndMindsYearAndTrack)
{
    using enum state::TagPageFocus;
    std::vector<state::TagPageFocus> led;
    const auto following = page.focusWanted.follow([&](const state::TagPageFocus& focus) {
        if (focus != none)
            led.push_back(focus);
        page.focusWanted = none;
    });
    page.Text8.enter();
    page.Text7.enter();
    page.Text6.enter();
    page.genlist1.enter();
    for (const wchar_t* year : {L"", L"1", L"3000", L"0", L"3001", L"soon"}) {
        page.Text4.text = year;
        page.Text4.enter();
    }
    for (const wchar_t* number : {L"99", L"100"}) {
        page.Text10.text = number;
        page.Text10.enter();
    }
    page.Text5.enter();
    EXPECT_THAT(led, ElementsAre(artist, album, genre, year, track, track, track, comment, save));
    EXPECT_EQ(host.dialogs.beeps, 4);
    EXPECT_EQ(page.Text4.text.get() + page.Text10.text.get(), L"");
}

TEST_F(Page, eachKindOfFileHasItsControls)
{
    select(L"three.Wav");
    EXPECT_FALSE(page.Text8.visible || page.Command4.visible || page.Frame3.visible || page.genlist1.visible);
    EXPECT_THAT(page.Label10.caption.get(), HasSubstr(L"Audio Sample Size: "));
    select(L"song.mp3");
    EXPECT_TRUE(page.Text8.visible && page.Command2.visible && page.Command9.visible);
    select(L"TWO.OGG");
    EXPECT_TRUE(page.Text8.visible && page.Command4.visible);
    EXPECT_FALSE(page.Command1.visible || page.Command2.visible || page.Command9.visible);
    EXPECT_THAT(page.Label10.caption.get(), HasSubstr(L"Type: Ogg Vorbis\r\n"));
}

TEST_F(Page, oggFilesAreWrittenByTheirOwnProgram)
{
    select(L"TWO.OGG");
    type(page.Text8, L"Dawn");
    page.Command4.press();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, L"Required 'vorbiscomment.exe' utility program not found!");
    EXPECT_EQ(host.dialogs.boxes[0].icon, platform::Dialogs::Icon::exclamation);
    host.files.put(L"C:\\CDTONQUAY\\oggtools\\vorbiscomment.exe", "program");
    host.processes.scripts = {{.named = L"vorbiscomment"}};
    type(page.Text10, L"7");
    page.Command4.press();
    EXPECT_EQ(host.files.contents(L"C:\\CDTONQUAY\\oggtools\\comments.txt"),
              "title=Dawn\r\nartist=\r\nalbum=\r\ngenre=\r\ndate=\r\ntracknumber=7\r\ncomment=\r\n");
    ASSERT_EQ(host.processes.started.size(), 1U);
    EXPECT_EQ(host.processes.started[0].command,
              L"vorbiscomment.exe  -w -c \"C:\\CDTONQUAY\\oggtools\\comments.txt\" \"C:\\Music\\TWO.OGG\"");
    EXPECT_EQ(host.processes.started[0].folder, L"C:\\CDTONQUAY\\oggtools");
    EXPECT_EQ(host.files.currentFolder(), L"C:\\CDTONQUAY");
}

TEST_F(Page, theSiblingIsOfferedWhenItIsThere)
{
    EXPECT_FALSE(page.Command1.enabled);
    EXPECT_THAT(page.Command1.toolTip.get(), HasSubstr(L"not installed"));
    host.files.put(L"C:\\CDTONQUAY\\tqutil.exe", "program");
    host.processes.scripts = {{.named = L"tqutil"}};
    tagPage.load();
    select(L"song.mp3");
    page.Command1.press();
    ASSERT_EQ(host.processes.started.size(), 1U);
    EXPECT_EQ(host.processes.started[0].command, L"C:\\CDTONQUAY\\tqutil.exe CDR \"C:\\Music\\song.mp3\"");
}

TEST_F(Page, autoTagOpensTheTaggerForTheDisc)
{
    page.Command9.press();
    EXPECT_EQ(state.flags.autoTagMode, state::tagDisc);
    EXPECT_EQ(forms.controlsOf<state::Id3autoControls>().form.state(), controls::Form::State::shown);
}

}
}
