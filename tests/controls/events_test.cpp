#include "controls/buttons.h"
#include "controls/lists.h"
#include "controls/slider.h"
#include "controls/timer.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::controls {
namespace {

// What code sets and whether that counts as an event is part of how the program works: a row chosen in code plays its
// track, a tick set in code ticks its neighbour, and a position shown in code must not seek.
TEST(Events, whichOnesFireOnCode)
{
    int fired = 0;
    const auto count = [&fired] { ++fired; };
    const auto firedBy = [&fired](const auto& act) {
        fired = 0;
        act();
        return fired;
    };

    ChoiceList choice;
    choice.click = count;
    choice.add(L"a");
    choice.add(L"b");
    CheckBox check;
    check.click = count;
    OptionButton option;
    option.click = count;
    Slider volume({-100, 0, -50}, Slider::OnCode::fires);
    volume.change = count;
    Slider position({0, 100, 0}, Slider::OnCode::silent);
    position.change = count;

    struct Case {
        const char* what;
        std::function<void()> act;
        int events;
    };
    const Case cases[] = {
        {"choosing a row", [&] { choice.setIndex(1); }, 1},
        {"choosing the same row again", [&] { choice.setIndex(1); }, 1},
        {"choosing a row that is not there", [&] { choice.setIndex(2); }, 0},
        {"choosing none", [&] { choice.setIndex(-1); }, 1},
        {"clearing the rows", [&] { choice.clear(); }, 0},
        {"ticking", [&] { check.setValue(1); }, 1},
        {"ticking what is ticked", [&] { check.setValue(1); }, 0},
        {"switching an option on", [&] { option.setValue(true); }, 1},
        {"switching an option off", [&] { option.setValue(false); }, 0},
        {"moving the volume", [&] { volume.setValue(-20); }, 1},
        {"volume past its end that is its end already", [&] { volume.setValue(-20); }, 0},
        {"showing a position", [&] { position.setValue(70); }, 0},
        {"dragging a position", [&] { position.drag(71); }, 1},
    };
    for (const Case& c : cases)
        EXPECT_EQ(firedBy(c.act), c.events) << c.what;
    volume.setValue(40);
    EXPECT_EQ(volume.value(), 0) << "clamped to its end";
}

TEST(MultiSelectList, keepsCursorApartFromSelection)
{
    MultiSelectList list;
    for (const wchar_t* text : {L"a", L"b", L"c"})
        list.add(text);
    list.select(2, true);
    list.select(7, true);
    list.setCursor(0);
    EXPECT_EQ(list.selectedCount(), 1);
    EXPECT_TRUE(list.isSelected(2));
    EXPECT_EQ(list.cursor(), 0);
    list.setCursor(5);
    EXPECT_EQ(list.cursor(), 0);
    list.clear();
    EXPECT_EQ(list.cursor(), -1);
    EXPECT_FALSE(list.isSelected(2));
}

TEST(Timer, ticksOnlyWhileEnabledAndBound)
{
    test::FakeHost host;
    Timer timer(std::chrono::milliseconds(500));
    int ticks = 0;
    timer.tick = [&] { ++ticks; };
    timer.setEnabled(true);
    timer.bind(host.loop);
    host.loop.runFor(std::chrono::milliseconds(1600));
    EXPECT_EQ(ticks, 3);
    timer.setEnabled(false);
    host.loop.runFor(std::chrono::milliseconds(2000));
    EXPECT_EQ(ticks, 3);
}

TEST(ChoiceRows, aSortedListKeepsItsChoiceWhileRowsComeAndGo)
{
    ChoiceList list;
    for (const wchar_t* text : {L"b", L"A", L"c"})
        list.addSorted(text);
    list.setIndex(1);
    list.addSorted(L"B", 7);
    list.addSorted(L"a2");
    const std::vector<std::wstring> wanted{L"A", L"a2", L"b", L"B", L"c"};
    for (std::int32_t i = 0; i < list.rowCount(); ++i)
        EXPECT_EQ(list.row(i).text, wanted[static_cast<std::size_t>(i)]);
    EXPECT_EQ(list.row(3).itemData, 7);
    EXPECT_EQ(list.chosen().text, L"b");
    list.remove(0);
    EXPECT_EQ(list.chosen().text, L"b");
    list.remove(1);
    EXPECT_EQ(list.chosen().text, L"B") << "takes the place of the chosen one";
    list.setIndex(2);
    list.remove(2);
    EXPECT_EQ(list.chosen().text, L"B") << "the last one";
    list.remove(5);
    list.remove(-1);
    EXPECT_EQ(list.rowCount(), 2);
}

}
}
