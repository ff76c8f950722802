#include "state/ripdeck_controls.h"

namespace tonquay::state {

RipdeckControls::RipdeckControls()
{
    form.caption = L"CD-Tonquay";
    form.width = 9600;
    form.height = 6300;

    constexpr std::array headings{L"Track", L"Time", L"Size, MB", L"Track Title"};
    for (std::size_t i = 0; i < headings.size(); ++i)
        Label5[i].caption = headings[i];

    list1.toolTip = L"Left click to highlight track, Right click to edit track name";

    constexpr std::array previewTips{L"Preview Previous Track",         L"Preview Next Track",    L"Play Track Preview",
                                     L"Pause Preview Playback",         L"Stop Preview Playback", L"Eject CD",
                                     L"Start Ripping Selected Track(s)"};
    for (std::size_t i = 0; i < previewTips.size(); ++i)
        icntla[i].toolTip = previewTips[i];

    constexpr std::array commands{L"Player", L"Setup", L"TagUtil", L"RipPart", L"Refresh",
                                  L"All",    L"Clear", L"Tags",    L"Rip"};
    for (std::size_t i = 0; i < commands.size(); ++i)
        Label10[i].caption = commands[i];

    constexpr std::array commandTips{L"Go to Audio CD Tonquay",
                                     L"Ripper Setup",
                                     L"ID3 Tag Utility",
                                     L"Rip Partial Track(s)",
                                     L"Refresh CD Info",
                                     L"Select All Tracks Above",
                                     L"Clear All Selected Tracks Above",
                                     L"MP3 ID3 Tags for this CD",
                                     L"Start Ripping Selected Track(s)"};
    for (std::size_t i = 0; i < commandTips.size(); ++i) {
        image10[i].toolTip = commandTips[i];
        Label10[i].toolTip = commandTips[i];
    }

    Label6[trackProgressCaption].caption = L"Track Progress ";
    Label6[totalProgressCaption].caption = L"Total Progress ";
    Label6[totalPercentText].caption = L"0%";
    Label6[totalPercentText].visible = false;
    Label6[trackPercentText].caption = L"0%";
    Label6[trackPercentText].visible = false;
    Label6[discCaption].caption = L"DISC";
    Label6[ripperCaption].caption = L"CD Ripper";
    Label6[statusLabel].caption = L"Recording ";
    Label6[partialCaption].caption = L"Partial";
    for (const StatusLabel label : {yearLabel, genreLabel, commentLabel}) {
        Label6[label].visible = false;
        Label6[label].toolTip = L"Left click to edit ID3 tag";
    }
    Label8.caption = L"0";
    Label66.caption = L"Preview ";
    LabelP[0].caption = L"Preview Track";
    LabelP[1].caption = L"Stop Preview";
    lblTrackTime.caption = L"0:00";
    lblTrackTot.caption = L"0:00";
    lblTrackTot.toolTip = L"Total Track Time";
    Label2.caption = L" Bal ";
    SSPanel1.toolTip = L"Left Click=Bal/Vol, Right Click=Mixer";
    tqtxt.toolTip = L"Display Popup Menu";
    Label12.fontSize = captionFontSize;
    Label13.fontSize = captionFontSize;
    Trackprogress.visible = false;
    Totalprogress.visible = false;
}

}
