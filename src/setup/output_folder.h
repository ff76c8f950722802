#pragma once

#include "state/app_state.h"
#include "state/cdriptab_controls.h"

#include <string_view>

namespace tonquay::setup {

/// The folder that ripped files go to: a choice of drives, a tree of folders, and the words above them.
class OutputFolder {
public:
    OutputFolder(state::AppState& state, state::CdriptabControls& form);

    /// Shows the folder of the settings, or the root of C: when there is none.
    void load();

private:
    void take();

    state::AppState& state_;
    state::CdriptabControls& form_;
};

/// The two controls that choose a folder show `folder`, or the root of C: for a blank one.
void showFolder(controls::DriveList& drive, controls::FolderTree& tree, std::wstring_view folder);

/// A drive was chosen: the tree opens its root.
void openRoot(const controls::DriveList& drive, controls::FolderTree& tree);

}
