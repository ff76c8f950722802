#include "deck/caption_size.h"

#include "state/disc_display.h"

namespace tonquay::deck {

namespace {

void resize(state::RipdeckControls& ripdeck, std::int32_t points)
{
    constexpr std::int32_t smallest = 6;
    constexpr std::int32_t largest = 36;
    for (controls::Label* label : {&ripdeck.Label12, &ripdeck.Label13}) {
        const std::int32_t size = label->fontSize + points;
        if (size >= smallest && size <= largest)
            label->fontSize = size;
    }
    state::placeTitle(ripdeck);
}

}

void wireCaptionSize(state::RipdeckControls& ripdeck)
{
    for (controls::Label* label : {&ripdeck.Label12, &ripdeck.Label13})
        label->mouseDown = [&ripdeck](controls::MouseButton button) {
            resize(ripdeck, button == controls::MouseButton::right ? 1 : -1);
        };
}

}
