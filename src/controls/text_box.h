#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <string>

namespace tonquay::controls {

/// A line of text for editing. Code that sets it fires nothing.
struct TextBox {
    Property<std::wstring> text;
    Property<bool> enabled{true};
    Property<bool> visible{true};
    Property<std::wstring> toolTip;

    Handler<> keyDown; ///< any key, Enter too, before it does anything
    Handler<> enter;   ///< the Enter key, which goes no further
    Handler<> leave;   ///< the keyboard went elsewhere
};

}
