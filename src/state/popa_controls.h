#pragma once

#include "controls/form.h"
#include "controls/menu.h"

#include <array>

namespace tonquay::state {

/// pop by index: the numbered entries of the popup menu.
enum PopupEntry : std::size_t {
    previousEntry = 0,
    nextEntry = 1,
    playEntry = 2,
    pauseEntry = 3,
    stopEntry = 4,
    ejectEntry = 5,
    ripEntry = 6,
    mixerEntry = 7,
    playerEntry = 8,
    setupEntry = 9,
    tagUtilityEntry = 10,
    partialEntry = 11,
    selectAllEntry = 12,
    clearAllEntry = 13,
    discTagsEntry = 14,
    editTitleEntry = 15,
    saveProgramEntry = 16,
    encodeEntry = 17,
    centerEntry = 18,
    convertEntry = 19,
};

/// The popup menu of the main window, held by a form without a window. It opens while the form loads.
struct PopaControls {
    controls::Form form;

    controls::Menu popopt;
    controls::MenuEntry popp;                ///< opens the entries of playback
    controls::MenuEntry popO;                ///< opens the rest
    std::array<controls::MenuEntry, 20> pop; ///< by PopupEntry
    controls::MenuEntry refreshcdx;
    controls::MenuEntry poph; ///< help

    PopaControls();
};

}
