#pragma once

#include "platform/platform.h"
#include "state/app_state.h"
#include "state/forms.h"
#include "state/tag_page_controls.h"
#include "tags/file_sight.h"

namespace tonquay::tagging {

/// The tag page: a folder's MP3, Ogg and WAV files, what each holds, and its tag in fields. Save writes the block at
/// the end of an MP3 file, or an Ogg file's comments through an outside program; WAV files are shown only.
///
/// Nothing is said of a failure but that a file is corrupt or that program is missing; the rest leaves a line.
class TagPage {
public:
    TagPage(state::AppState& state, state::Forms& forms, platform::Platform& platform);

    /// What the page shows when the dialog loads: the files of the output folder.
    void load();

private:
    void leadByEnter();
    void openDrive();
    void openFolder();
    void listFiles();
    void selectFile();
    void show(const tags::TagFields& fields);
    void show(const tags::FileSight& sight);
    void showMp3();
    void showOgg();
    void showWav();
    void showEditing(bool shown);
    void copy();
    void paste();
    void autoTag();
    void openUtility();
    void save();
    void saveMp3();
    void saveOgg();
    bool mayReplaceComments();

    state::AppState& state_;
    state::Forms& forms_;
    state::CdriptabControls& setup_;
    state::TagPageControls& page_;
    platform::Platform& platform_;
    bool TagChanged = false;
};

}
