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
    cmdStart.caption = L"&Start";
    cmdCancel.caption = L"Cancel";
    cmdRefresh.caption = L"Refresh CD &Information";
}

}
