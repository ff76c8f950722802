#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <string>

namespace tonquay::controls {

/// A choice of drives. Code that sets it fires nothing.
struct DriveList {
    Property<std::wstring> drive; ///< letter and colon

    Handler<> change; ///< by the user
};

/// A tree of folders with one that is open. Code that sets it fires nothing.
struct FolderTree {
    Property<std::wstring> path; ///< in the program's form
    Property<std::wstring> toolTip;

    Handler<> change; ///< by the user

    /// What a user's choice does.
    void open(std::wstring folder)
    {
        path = std::move(folder);
        change();
    }
};

/// A box around controls, with a caption.
struct Frame {
    Property<std::wstring> caption;
    Property<bool> enabled{true};
    Property<bool> visible{true};
};

}
