#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <string>
#include <vector>

namespace tonquay::controls {

/// One entry of a menu.
struct MenuEntry {
    Property<std::wstring> caption;
    Property<bool> enabled{true};

    Handler<> click;

    /// What a choice by the user does: nothing while it is disabled.
    void choose() const
    {
        if (enabled)
            click();
    }
};

/// A place in a menu: an entry, an entry that opens further ones, or a separator.
struct MenuLine {
    MenuEntry* entry = nullptr; ///< none for a separator
    std::vector<MenuLine> lines{};
};

/// A menu that opens where the pointer is.
struct Menu {
    std::vector<MenuLine> lines;

    Handler<> closed; ///< the user chose something, or nothing; an entry's click may come before or after

    /// Told when it is to open.
    Followers<> opened;
};

}
