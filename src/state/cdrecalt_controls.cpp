#include "state/cdrecalt_controls.h"

namespace tonquay::state {

CdrecaltControls::CdrecaltControls()
{
    form.caption = L"CD-Tonquay - CD Ripper";
    form.design = [this] {
        tmrRecord.setEnabled(false);
        for (controls::ChoiceList* list : {&lstTracks, &lstRecord}) {
            list->clear();
            list->enabled = true;
        }
        txtFile.text = L"";
        txtFile.enabled = true;
        for (controls::Label* label : {&lblCDID, &lblNumTracks, &lblStatus})
            label->caption = L"";
        lblStatus.visible = false;
        for (controls::Button* key : {&cmdTo, &cmdFrom, &cmdStart, &cmdRefresh})
            key->enabled = true;
        cmdCancel.enabled = false;
    };
    form.design();
    captions[availableTracksCaption].caption = L"&Available Tracks";
    captions[recordTracksCaption].caption = L"&Record Tracks";
    captions[filenameCaption].caption = L"&Filename:";
    captions[discIdCaption].caption = L"CD ID:";
    captions[trackCountCaption].caption = L"# of Tracks:";
    cmdTo.caption = L"A&dd >";
    cmdTo.toolTip = L"Record this track; the group row ends a group of tracks that become one file";
    cmdFrom.caption = L"< Re&move";
    cmdFrom.toolTip = L"Do not record this row";
    cmdStart.caption = L"&Start";
    cmdStart.toolTip = L"Play the tracks on the right and record them";
    cmdCancel.caption = L"Cancel";
    cmdCancel.toolTip = L"End the recording; what was recorded so far is kept";
    cmdRefresh.caption = L"Refresh CD &Information";
    cmdRefresh.toolTip = L"Read the disc anew";
}

}
