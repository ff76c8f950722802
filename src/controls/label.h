#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <cstdint>
#include <string>

namespace tonquay::controls {

/// 0x00BBGGRR, compared as a number.
using Colour = std::int32_t;

/// A text that the user sees and may press.
struct Label {
    Property<std::wstring> caption;
    Property<Colour> colour{0};
    Property<bool> visible{true};
    Property<bool> enabled{true};
    Property<std::wstring> fontName;    ///< empty: the design's own
    Property<std::int32_t> fontSize{0}; ///< points; 0: the design's own
    Property<std::int32_t> left{0};     ///< twips
    Property<std::int32_t> width{0};    ///< twips; a view that draws the text says what it takes
    Property<std::wstring> toolTip;

    Handler<MouseButton> mouseDown;
    Handler<MouseButton> mouseUp;
    Handler<> doubleClick;

    /// What a click by the user does.
    void click() const
    {
        mouseDown(MouseButton::left);
        mouseUp(MouseButton::left);
    }
};

/// A picture that works as a key. Its picture is one of a few looks, told apart by number.
struct Image {
    Property<int> picture{0};
    Property<bool> visible{true};
    Property<bool> enabled{true};
    Property<std::wstring> toolTip;

    Handler<MouseButton> mouseDown;
    Handler<MouseButton> mouseUp;
};

}
