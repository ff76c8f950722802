#include "disc/title_edit.h"

#include "base/numbers.h"
#include "base/text.h"
#include "disc/row_builder.h"

#include <algorithm>

namespace tonquay::disc {

TitleEdit::TitleEdit(state::AppState& state, state::RipdeckControls& ripdeck, platform::AcdControl& acd,
                     platform::Dialogs& dialogs)
    : state_(state),
      list_(ripdeck.list1),
      acd_(acd),
      dialogs_(dialogs)
{
    list_.mouseDown = [this](controls::MouseButton button) { List1_MouseDown(button); };
}

void TitleEdit::List1_MouseDown(controls::MouseButton button)
{
    if (button != controls::MouseButton::right)
        return;
    const std::int32_t cursor = list_.cursor();
    for (std::int32_t row = 0; row < list_.rowCount() && state::hasTrackSlot(row); ++row)
        trackSelectionMemo[static_cast<std::size_t>(row)] = list_.isSelected(row) ? 1 : 0;
    const std::int32_t number = cursor + 1;
    const auto title =
        dialogs_.inputBox(L"CD-Tonquay - Edit Track Description",
                          L"Enter a new track description for \"Track" + base::str(number) + L"\" below:",
                          base::trim(state_.disc.trackTitles(number)));
    if (!title || base::isBlank(*title))
        return;
    state_.disc.trackTitles.set(number, *title);
    rebuildList();
    list_.setCursor(cursor);
}

void TitleEdit::rebuildList()
{
    const std::int32_t rows = list_.rowCount();
    list_.clear();
    for (std::int32_t number = 1; number <= rows; ++number)
        addControlTrack(list_, state_.disc, acd_, static_cast<std::int16_t>(number));
    for (std::int32_t row = 0; row < rows && state::hasTrackSlot(row); ++row)
        list_.select(row, trackSelectionMemo[static_cast<std::size_t>(row)] == 1);
}

}
