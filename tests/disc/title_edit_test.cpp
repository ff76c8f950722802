#include "disc/row_builder.h"
#include "disc/title_edit.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::disc {
namespace {

using controls::MouseButton;

struct Title : testing::Test {
    test::FakeHost host;
    state::AppState state;
    state::RipdeckControls main;
    TitleEdit edit{state, main, host.acd, host.dialogs};

    Title()
    {
        host.acd.drives = {{L"D", {61000, 62000, 63999}}};
        for (std::int16_t n = 1; n <= 3; ++n) {
            state.disc.trackTitles.set(n, n == 2 ? L"  Noon " : L"Other");
            addControlTrack(main.list1, state.disc, host.acd, n);
        }
        main.list1.select(0, true);
        main.list1.select(2, true);
        main.list1.setCursor(1);
    }
};

TEST_F(Title, newTitleKeepsSelectionAndCursor)
{
    host.dialogs.typed.emplace_back(L"  Rain: \"one\"");
    main.list1.mouseDown(MouseButton::right);
    ASSERT_EQ(host.dialogs.inputs.size(), 1U);
    EXPECT_EQ(host.dialogs.inputs[0].title, L"CD-Tonquay - Edit Track Description");
    EXPECT_EQ(host.dialogs.inputs[0].prompt, L"Enter a new track description for \"Track 2\" below:");
    EXPECT_EQ(host.dialogs.inputs[0].defaultText, L"Noon");
    EXPECT_EQ(state.disc.trackTitles(2), L"  Rain: \"one\"") << "as typed";
    ASSERT_EQ(main.list1.rowCount(), 3);
    EXPECT_EQ(main.list1.row(1), trackRow(2, 62, L"  Rain: \"one\""));
    EXPECT_TRUE(main.list1.isSelected(0));
    EXPECT_FALSE(main.list1.isSelected(1));
    EXPECT_TRUE(main.list1.isSelected(2));
    EXPECT_EQ(main.list1.cursor(), 1);
}

TEST_F(Title, cancelAnEmptyTextAndOtherButtonsChangeNothing)
{
    main.list1.mouseDown(MouseButton::left);
    EXPECT_TRUE(host.dialogs.inputs.empty());
    for (const auto& answer : {std::optional<std::wstring>(), std::optional<std::wstring>(L"")}) {
        host.dialogs.typed.push_back(answer);
        main.list1.mouseDown(MouseButton::right);
        EXPECT_EQ(state.disc.trackTitles(2), L"  Noon ");
    }
}

TEST_F(Title, lengthsComeAnewWhereTheControlTellsThem)
{
    host.acd.drives = {{L"D", {90000}}};
    host.dialogs.typed.emplace_back(L"Rain");
    main.list1.mouseDown(MouseButton::right);
    EXPECT_EQ(state.disc.trackSeconds(1), 90);
    EXPECT_EQ(state.disc.trackSeconds(3), 63);
    EXPECT_EQ(main.list1.row(2), trackRow(3, 63, L"Other"));
}

TEST_F(Title, withoutACursorTheListStaysAsItIs)
{
    main.list1.setCursor(-1);
    host.dialogs.typed.emplace_back(L"Rain");
    main.list1.mouseDown(MouseButton::right);
    EXPECT_EQ(host.dialogs.inputs[0].prompt, L"Enter a new track description for \"Track 0\" below:");
    EXPECT_EQ(state.disc.trackTitles(0), L"Rain");
    EXPECT_EQ(main.list1.row(1), trackRow(2, 62, L"  Noon "));
    EXPECT_EQ(main.list1.selectedCount(), 2);
}

}
}
