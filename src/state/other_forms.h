#pragma once

#include "controls/form.h"
#include "controls/lists.h"
#include "controls/text_box.h"

namespace tonquay::state {

/// The setup dialog: what other forms reach of it.
struct CdriptabControls {
    controls::Form form;
    controls::ChoiceList List2;              ///< the drives to choose from
    controls::ChoiceList List3;              ///< the selected drive
    controls::ChoiceList List4;              ///< the rip methods
    controls::TextBox Text3;                 ///< the encoder
    controls::Property<std::int32_t> tab{1}; ///< TabStrip1's selected tab, from 1

    CdriptabControls();
};

/// The frame behind the setup dialog.
struct CdripbgControls {
    controls::Form form;
};

/// Analog capture.
struct CdrecaltControls {
    controls::Form form;
    controls::Handler<> cmdCancel;
};

}
