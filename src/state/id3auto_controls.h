#pragma once

#include "controls/buttons.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/lists.h"
#include "controls/text_box.h"
#include "state/run_flags.h"

#include <cstdint>

namespace tonquay::state {

/// What of the automatic tagger can have the keyboard.
enum class TaggerFocus { artist, album, year, genre, comment, startButton };

/// The automatic tagger: the values that go into the tags of a disc's MP3 files, or that are kept for the disc.
struct Id3autoControls {
    controls::Form form;

    controls::TextBox Text2;   ///< artist
    controls::TextBox Text3;   ///< album
    controls::TextBox Text4;   ///< year
    controls::ComboBox list1;  ///< genres
    controls::TextBox Text5;   ///< comment
    controls::CheckBox Check1; ///< artist and album change places
    controls::CheckBox Check2; ///< leading articles go to the end
    controls::Button Command1; ///< starts
    controls::Button Command2; ///< cancels
    controls::Label note;

    /// Set by a view when the user moves the keyboard, and by the behaviour when the view is to move it.
    controls::Property<TaggerFocus> focused{TaggerFocus::artist};

    Id3autoControls();

private:
    void resetToDesign();
};

/// Shows the tagger in a mode of its own (autoTagMode). Afresh, since it works while it loads, and one that is open
/// already closes in the mode that it was opened in.
void showTagger(Id3autoControls& tagger, RunFlags& flags, std::int16_t mode);

}
