#include "state/trkcust_controls.h"

namespace tonquay::state {

TrkcustControls::TrkcustControls()
{
    form.caption = L"CD-Tonquay - Rip partial track(s)";
    form.design = [this] {
        ListView1.clear();
        for (controls::TextBox* field : {&Text1, &Text2, &Text4})
            field->text = L"";
        focused = PartialFocus::list;
    };
    listToolTip = L"Click to edit track start / end time(s)";
    captions[partialTrackCaption].caption = L"Track";
    captions[partialStartCaption].caption = L"Start Time (mm:ss)";
    captions[partialEndCaption].caption = L"End Time (mm:ss)";
    for (const PartialCaption time : {partialStartCaption, partialEndCaption})
        captions[time].toolTip = L"Enter Time, then press the ENTER key";
    Text1.toolTip = captions[partialStartCaption].toolTip.get();
    Text2.toolTip = captions[partialEndCaption].toolTip.get();
    Text4.toolTip = L"Enter Track #, then press the ENTER key";
    Command1.caption = L"&OK";
    Command2.caption = L"&Cancel";
}

}
