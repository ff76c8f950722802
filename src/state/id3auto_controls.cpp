#include "state/id3auto_controls.h"

namespace tonquay::state {

Id3autoControls::Id3autoControls()
{
    form.caption = L"CD-Tonquay ID3 Tagger";
    form.design = [this] { resetToDesign(); };
    Check1.caption = L"Swap Album && Artist Names";
    Check2.caption = L"Move The, A, An prefixes to end of Artist && Album names";
    Command1.caption = L"&Start";
    Command2.caption = L"&Cancel";
    note.caption = L"NOTE: This utility will automatically set MP3 ID3 tag(s) for all of the songs found for the audio "
                   L"CD in your CD-ROM drive.";
}

void Id3autoControls::resetToDesign()
{
    form.left = 0;
    for (controls::TextBox* field : {&Text2, &Text3, &Text4, &Text5})
        field->text = L"";
    list1.clear();
    Check1.setValue(0);
    Check2.setValue(0);
    focused = TaggerFocus::artist;
}

void showTagger(Id3autoControls& tagger, RunFlags& flags, std::int16_t mode)
{
    tagger.form.unload();
    flags.autoTagMode = mode;
    tagger.form.show();
}

}
