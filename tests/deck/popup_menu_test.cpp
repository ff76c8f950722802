#include "deck_harness.h"

#include <gmock/gmock.h>

namespace tonquay::deck {
namespace {

using controls::MouseButton;
using testing::ElementsAre;

/// The captions of a menu as one would read them: submenus behind "name:", separators as "-".
std::vector<std::wstring> captions(const std::vector<controls::MenuLine>& lines)
{
    std::vector<std::wstring> read;
    for (const controls::MenuLine& line : lines) {
        if (line.entry == nullptr) {
            read.emplace_back(L"-");
            continue;
        }
        read.push_back(line.entry->caption.get() + (line.lines.empty() ? L"" : L":"));
        for (const std::wstring& below : captions(line.lines))
            read.push_back(below);
    }
    return read;
}

struct Popup : Deck {
    state::PopaControls& popa = forms.controlsOf<state::PopaControls>();
    std::vector<std::wstring> pressed;

    Popup()
    {
        handOver();
        startUp.run(L"C:\\CDTONQUAY");
    }
};

TEST_F(Popup, hasItsEntriesInOrder)
{
    EXPECT_THAT(captions(popa.popopt.lines),
                ElementsAre(L"Playback:", L"Previous Track", L"Next Track", L"Play", L"Pause", L"Stop", L"Options:",
                            L"Eject", L"Rip (Record)", L"Mixer", L"-", L"Go to Audio CD Tonquay", L"Refresh CD Info",
                            L"CD Ripper Setup", L"MP3 ID3 Utilities", L"Rip Partial Track(s)",
                            L"Convert MP3 File(s) to WAV File(s)", L"Select All Tracks", L"Clear All Selected Tracks",
                            L"MP3 ID3 Tags for this CD", L"-", L"Edit Track Name (of Highlighted Track)",
                            L"Save Selected Track(s) as Media Tonquay Program",
                            L"Encode (WAV to MP3) Selected Track(s)", L"-", L"Center CD Ripper", L"Help"));
}

TEST_F(Popup, entriesPressAndReleaseTheControlsOfTheirCommands)
{
    const auto record = [this](controls::Image& image, const std::wstring& name) {
        image.mouseDown = [this, name](MouseButton) { pressed.push_back(name + L" down"); };
        image.mouseUp = [this, name](MouseButton) { pressed.push_back(name + L" up"); };
    };
    for (std::size_t i = 0; i < main.icntla.size(); ++i)
        record(main.icntla[i], L"icntla " + std::to_wstring(i));
    for (std::size_t i = 0; i < main.image10.size(); ++i)
        record(main.image10[i], L"image10 " + std::to_wstring(i));
    record(main.Image15, L"Image15");

    const std::vector<std::pair<std::size_t, std::wstring>> cases{
        {0, L"icntla 0"},   {1, L"icntla 1"},   {2, L"icntla 2"},   {3, L"icntla 3"},   {4, L"icntla 4"},
        {5, L"icntla 5"},   {6, L"icntla 6"},   {8, L"image10 0"},  {9, L"image10 1"},  {10, L"image10 2"},
        {11, L"image10 3"}, {12, L"image10 5"}, {13, L"image10 6"}, {14, L"image10 7"},
    };
    for (const auto& [entry, name] : cases) {
        pressed.clear();
        popa.pop[entry].choose();
        EXPECT_THAT(pressed, ElementsAre(name + L" down", name + L" up")) << "pop" << entry;
    }
    pressed.clear();
    popa.pop[state::mixerEntry].choose();
    EXPECT_THAT(pressed, ElementsAre(L"Image15 down")) << "pressed, never released";
}

TEST_F(Popup, ownCommandsOfTheMenu)
{
    MouseButton onList = MouseButton::none;
    main.list1.mouseDown = [&onList](MouseButton button) { onList = button; };
    popa.pop[state::editTitleEntry].choose();
    EXPECT_EQ(onList, MouseButton::right);

    popa.pop[state::saveProgramEntry].choose();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_THAT(host.dialogs.boxes[0].text, testing::StartsWith(L"Media Tonquay program saved as: "));

    popa.pop[state::centerEntry].choose();
    EXPECT_EQ(main.form.top.get(), (1080 * 15 - main.form.height) / 2);
    popa.poph.choose();
    EXPECT_EQ(host.help.shown.size(), 1U);

    popa.pop[state::convertEntry].choose();
    EXPECT_EQ(forms.cdriptab().tab.get(), 3);
    EXPECT_FALSE(main.form.enabled);

    EXPECT_THROW(popa.refreshcdx.choose(), test::ProgramEnded);
    EXPECT_EQ(host.processes.started.back().command, L"C:\\CDTONQUAY\\tqlaunch.exe RUNRIPPER");
}

TEST_F(Popup, encodeExtractsNothingAndIsNotOfferedDuringARun)
{
    main.list1.deselectAll();
    popa.pop[state::encodeEntry].choose();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, L"No track(s) selected!");
    EXPECT_EQ(state.flags.encodeOnly, 1) << "until the next Start";
    main.icntla[state::startButton].mouseUp(MouseButton::left);
    EXPECT_EQ(state.flags.encodeOnly, 1) << "nothing is selected, so nothing was started";

    state.flags.ripBusy = 1;
    popa.form.show();
    EXPECT_FALSE(popa.pop[state::encodeEntry].enabled);
    popa.popopt.closed();
    state.flags.ripBusy = 0;
    popa.form.show();
    EXPECT_TRUE(popa.pop[state::encodeEntry].enabled);
}

}
}
