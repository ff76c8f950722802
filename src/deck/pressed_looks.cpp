#include "deck/pressed_looks.h"

namespace tonquay::deck {

namespace {

template <class Keys>
void wire(Keys& keys)
{
    for (controls::Image& key : keys)
        key.mouseDown = [&key](controls::MouseButton) { key.picture = state::pressedLook; };
}

}

void wirePressedLooks(state::RipdeckControls& ripdeck)
{
    wire(ripdeck.icntla);
    wire(ripdeck.image10);
}

}
