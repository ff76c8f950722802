#pragma once

#include "controls/buttons.h"
#include "controls/combo_box.h"
#include "controls/folders.h"
#include "controls/label.h"
#include "controls/lists.h"
#include "controls/text_box.h"

namespace tonquay::state {

/// What of the tag page can be given the keyboard by the program.
enum class TagPageFocus { none, title, artist, album, genre, year, track, comment, save };

/// The page "MP3/Ogg/WAV Tag Utility" of the setup dialog.
struct TagPageControls {
    /// Set by the behaviour when the keyboard is to go somewhere; a view answers with none when it is there.
    controls::Property<TagPageFocus> focusWanted{TagPageFocus::none};

    controls::DriveList Drive2;          ///< drive of the folder
    controls::FolderTree dir2;           ///< the folder
    controls::MultiSelectList List55;    ///< the files in it; of the selected ones the first counts
    controls::TextBox Text8;             ///< title
    controls::TextBox Text7;             ///< artist
    controls::TextBox Text6;             ///< album
    controls::EditableComboBox genlist1; ///< genre
    controls::TextBox Text4;             ///< year
    controls::TextBox Text10;            ///< track number
    controls::TextBox Text5;             ///< comment
    controls::Label Label10;             ///< what the file is, in lines
    controls::Button Command1;           ///< the file goes to the sibling for ID3v2 tags
    controls::Button Command2;           ///< reads the file anew
    controls::Button Command3;           ///< empties the fields
    controls::Button Command4;           ///< writes the tag
    controls::Button Command5;           ///< keeps the fields for other files
    controls::Button Command6;           ///< fills the fields with what was kept
    controls::Button Command9;           ///< tags the files of the disc
    controls::Frame Frame3;              ///< around the two ticks
    controls::CheckBox Check10;          ///< title and artist change places
    controls::CheckBox Check11;          ///< a leading article goes to the end

    TagPageControls();

    void resetToDesign();
};

}
