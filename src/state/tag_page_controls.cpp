#include "state/tag_page_controls.h"

namespace tonquay::state {

TagPageControls::TagPageControls()
{
    Command1.caption = L"ID3v2";
    Command1.toolTip = L"Edit the ID3v2 tag of this file";
    Command2.caption = L"Revert";
    Command2.toolTip = L"Show what the file holds";
    Command3.caption = L"Clear";
    Command3.toolTip = L"Empty the fields";
    Command4.caption = L"Save";
    Command4.toolTip = L"Write the tag into the file";
    Command5.caption = L"Copy";
    Command5.toolTip = L"Copy Tag Info";
    Command6.caption = L"Paste";
    Command6.toolTip = L"Paste Tag Info";
    Command9.caption = L"AutoTag";
    Command9.toolTip = L"Tag the MP3 files of the disc in the drive";
    Frame3.caption = L"Options";
    Check10.caption = L"Swap Album && Artist Names";
    Check11.caption = L"Move The, A, An prefixes to end of Artist && Album names";
    resetToDesign();
}

void TagPageControls::resetToDesign()
{
    List55.clear();
    genlist1.clear();
    for (controls::TextBox* box : {&Text4, &Text5, &Text6, &Text7, &Text8, &Text10}) {
        box->text = L"";
        box->visible = true;
    }
    for (controls::Button* key : {&Command1, &Command2, &Command3, &Command4, &Command5, &Command6, &Command9})
        key->visible = true;
    for (controls::CheckBox* box : {&Check10, &Check11}) {
        box->setValue(0);
        box->visible = true;
    }
    genlist1.visible = true;
    Frame3.visible = true;
    Label10.caption = L"";
    focusWanted = TagPageFocus::none;
}

}
