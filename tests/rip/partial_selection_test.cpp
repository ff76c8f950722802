#include "rip/partial_selection.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::rip {
namespace {

using state::PartialFocus;

struct Partial : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    PartialSelection selection{state, forms, platform};
    state::TrkcustControls& form = forms.controlsOf<state::TrkcustControls>();

    Partial()
    {
        state.disc.trackCount = 12;
        for (int n = 1; n <= 12; ++n) {
            state.disc.trackSeconds.set(n, 60 * n + 7);
            state.disc.trackTitles.set(n, L"Song " + std::to_wstring(n));
        }
    }

    void pick(std::int32_t row)
    {
        form.ListView1.select(row);
        form.ListView1.pick();
    }

    /// As a person types and then presses Enter.
    static void type(controls::TextBox& box, const std::wstring& text)
    {
        box.keyDown();
        box.text = text;
    }

    std::wstring cell(std::int32_t row, std::size_t column) const
    {
        const auto cells = form.ListView1.row(row).cells;
        return column < cells.size() ? cells[column] : L"none";
    }
};

TEST(PartialTime, isReadFromItsSecondOrThirdColonAndItsLastTwoCharacters)
{
    struct Case {
        const wchar_t* typed;
        std::int32_t seconds;
    };
    const Case cases[] = {
        {L"3:07", 187},   {L"12:05", 725}, {L"45", 45},   {L"7", 7},      {L"75:80", 59 * 60 + 59},
        {L" 3:07 ", 187}, {L"", 0},        {L"a:10", 10}, {L"3:", 180},   {L"3:7", 180},
        {L"1:2:03", 63},  {L"123:04", 4},  {L"99", 59},   {L"3:0x", 180}, {L"0:00", 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(partialSeconds(c.typed), c.seconds) << std::string(c.typed, c.typed + std::wcslen(c.typed));
    EXPECT_EQ(partialTimeText(0), L"0:00");
    EXPECT_EQ(partialTimeText(725999), L"12:05");
    EXPECT_EQ(partialTimeText(6000000), L"100:00");
}

TEST_F(Partial, openingListsAllTracksWithEndsAnewAndStartsKept)
{
    state.partial.partialStartMs.set(10, 61000);
    state.partial.partialEndMs.set(10, 5000);
    form.form.show();
    EXPECT_FALSE(forms.ripdeck().form.enabled);
    EXPECT_EQ(form.ListView1.columns(),
              (std::vector<std::wstring>{L"Track     ", L"Start Time", L"End Time", L"Track Title"}));
    ASSERT_EQ(form.ListView1.rowCount(), 12);
    EXPECT_EQ(form.ListView1.row(8).key, L"Row9");
    EXPECT_EQ(cell(8, 0), L"Track 09");
    EXPECT_EQ(cell(9, 0), L"Track 10");
    EXPECT_EQ(cell(9, 1), L"1:01");
    EXPECT_EQ(cell(9, 2), L"10:07");
    EXPECT_EQ(cell(9, 3), L"Song 10");
    EXPECT_EQ(form.ListView1.selected(), 0);

    form.form.unload();
    state.disc.trackCount = 0;
    host.acd.drives = {{L"D", {1000, 2000}}};
    form.form.show();
    EXPECT_EQ(state.disc.trackCount, 2) << "the control knows it when no hand-over has told it";
}

TEST_F(Partial, aTrackIsPickedAndItsTimesAreTyped)
{
    form.form.show();
    pick(4);
    EXPECT_EQ(form.Text4.text.get(), L"5");
    EXPECT_EQ(form.Text1.text.get(), L"0:00");
    EXPECT_EQ(form.Text2.text.get(), L"5:07");
    type(form.Text1, L"1:2:09");
    form.Text1.enter();
    EXPECT_EQ(form.Text1.text.get(), L"1:09");
    EXPECT_EQ(cell(4, 1), L"1:09");
    EXPECT_EQ(form.focused.get(), PartialFocus::list);
    EXPECT_EQ(form.ListView1.selected(), 0);
    type(form.Text2, L"4:00");
    form.Text2.enter();
    EXPECT_EQ(cell(4, 2), L"4:00");
    form.Text4.text = L" 4 ";
    form.Text4.enter();
    EXPECT_EQ(form.Text2.text.get(), L"4:07");
    form.Command1.press();
    EXPECT_EQ(form.form.state(), controls::Form::State::notLoaded);
    EXPECT_TRUE(forms.ripdeck().form.enabled);
    EXPECT_EQ(state.partial.partialStartMs(5), 69000);
    EXPECT_EQ(state.partial.partialLengthMs(5), 240000 - 69000);
    EXPECT_EQ(state.partial.partialLengthMs(4), 0);
}

TEST_F(Partial, timesOutsideTheTrackArePutRight)
{
    struct Case {
        const char* what;
        double storedLength;
        const wchar_t* start;
        const wchar_t* end;
        double startMs, endMs;
    };
    const Case cases[] = {
        {"an end behind the track's", 0, nullptr, L"9:99", 0, 127000},
        {"an end at the track's", 0, nullptr, L"2:07", 0, 127000},
        {"a start in the last second", 0, L"2:06", nullptr, 126000, 127000},
        {"a start at the track's end", 0, L"2:07", nullptr, 0, 127000},
        {"a start too late for the length of the last OK", 60000, L"1:07", nullptr, 0, 127000},
        {"the end goes by the length of the last OK and not by the new one", 60000, L"1:06", L"0:30", 66000, 30000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        state.partial = {};
        state.partial.partialLengthMs.set(2, c.storedLength);
        form.form.unload();
        form.form.show();
        pick(1);
        if (c.start != nullptr)
            type(form.Text1, c.start);
        if (c.end != nullptr)
            type(form.Text2, c.end);
        form.captions[state::partialTrackCaption].mouseUp(controls::MouseButton::left);
        EXPECT_EQ(state.partial.partialStartMs(2), c.startMs);
        EXPECT_EQ(state.partial.partialEndMs(2), c.endMs);
    }
}

TEST_F(Partial, okTellsWholeTracksFromPartialOnes)
{
    struct Case {
        const char* what;
        double startMs, endMs, lengthMs;
    };
    const Case cases[] = {
        {"whole", 0, 127000, 0},
        {"an end cut by a second", 0, 126000, 0},
        {"an end cut by two", 0, 125000, 125000},
        {"a start", 1000, 127000, 126000},
        {"an end before the start", 100000, 50000, -50000},
    };
    form.form.show();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        form.form.show();
        state.partial.partialStartMs.set(2, c.startMs);
        state.partial.partialEndMs.set(2, c.endMs);
        form.Command1.press();
        EXPECT_EQ(state.partial.partialLengthMs(2), c.lengthMs);
    }
}

TEST_F(Partial, pendingTimesAreTakenOverOnTheWayOut)
{
    struct Case {
        const char* what;
        std::function<void()> act;
    };
    const Case cases[] = {
        {"leaving the field", [this] { form.Text1.leave(); }},
        {"a click on the form", [this] { form.form.mouseDown(controls::MouseButton::left); }},
        {"a click in the list", [this] { form.ListView1.pick(); }},
        {"OK", [this] { form.Command1.press(); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        state.partial = {};
        form.form.show();
        pick(2);
        type(form.Text2, L"2:00");
        type(form.Text1, L"0:30");
        c.act();
        EXPECT_EQ(state.partial.partialStartMs(3), 30000);
        EXPECT_EQ(state.partial.partialEndMs(3), 120000);
    }
}

TEST_F(Partial, cancelAndEscapeKeepTheTimesAndLeaveTheLengths)
{
    for (const bool escape : {false, true}) {
        state.partial.partialLengthMs.set(3, 5000);
        form.form.show();
        pick(2);
        type(form.Text2, L"2:00");
        form.Text2.enter();
        if (escape)
            form.form.keyDown(controls::Key::escape);
        else
            form.Command2.press();
        EXPECT_FALSE(form.form.isLoaded());
        EXPECT_TRUE(forms.ripdeck().form.enabled);
        EXPECT_EQ(state.partial.partialEndMs(3), 120000);
        EXPECT_EQ(state.partial.partialLengthMs(3), 5000);
    }
}

TEST_F(Partial, numbersThatAreNoTrackChangeNothing)
{
    form.form.show();
    for (const wchar_t* number : {L"", L"101", L"x", L"-1", L"40000000000"}) {
        form.Text4.text = number;
        form.Text4.enter();
        type(form.Text2, L"0:05");
        form.Text2.enter();
        type(form.Text1, L"0:03");
        form.Text1.enter();
    }
    for (int n = 0; n <= 100; ++n) {
        EXPECT_EQ(state.partial.partialStartMs(n), 0);
        EXPECT_EQ(state.partial.partialEndMs(n), n <= 12 && n > 0 ? (60 * n + 7) * 1000 : 0);
    }
}

}
}
