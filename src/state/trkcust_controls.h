#pragma once

#include "controls/buttons.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/text_box.h"

#include <array>
#include <cstddef>

namespace tonquay::state {

/// The captions of the fields, by index.
enum PartialCaption : std::size_t { partialTrackCaption = 0, partialStartCaption = 1, partialEndCaption = 2 };

/// What of the partial rip dialog can have the keyboard.
enum class PartialFocus { list, track, start, end, okButton };

/// The choice of a part of each track.
struct TrkcustControls {
    controls::Form form;

    controls::ListView ListView1;            ///< all tracks with the part that is wanted
    controls::TextBox Text4;                 ///< number of the track in work
    controls::TextBox Text1;                 ///< its start
    controls::TextBox Text2;                 ///< its end
    std::array<controls::Label, 3> captions; ///< of the fields, by PartialCaption
    controls::Button Command1;               ///< takes the parts over
    controls::Button Command2;               ///< leaves
    controls::Property<std::wstring> listToolTip;

    /// Set by a view when the user moves the keyboard, and by the behaviour when the view is to move it.
    controls::Property<PartialFocus> focused{PartialFocus::list};

    TrkcustControls();
};

}
