#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <string>
#include <vector>

namespace tonquay::controls {

/// A line of text with rows to choose it from; the text may be none of them. Code that sets it fires nothing.
struct EditableComboBox {
    Property<std::wstring> text;
    Property<std::vector<std::wstring>> rows;
    Property<bool> visible{true};

    Handler<> keyDown; ///< any key, and a choice from the rows, before it does anything
    Handler<> enter;   ///< the Enter key, which goes no further

    /// No rows and no text.
    void clear()
    {
        rows = std::vector<std::wstring>();
        text = std::wstring();
    }
};

}
