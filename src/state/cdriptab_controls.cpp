#include "state/cdriptab_controls.h"

#include "base/numbers.h"

namespace tonquay::state {

namespace {

constexpr std::array<const wchar_t*, 14> bitrateCaptions{
    L"32,000 bps",  L"40,000 bps",  L"48,000 bps",  L"56,000 bps",  L"64,000 bps",  L"80,000 bps",  L"96,000 bps",
    L"112,000 bps", L"128,000 bps", L"160,000 bps", L"192,000 bps", L"224,000 bps", L"256,000 bps", L"320,000 bps"};

constexpr std::size_t oggQualities = 11;

struct Caption {
    controls::CheckBox CdriptabControls::*box;
    const wchar_t* caption;
    const wchar_t* toolTip;
};

constexpr std::array boxCaptions{
    Caption{&CdriptabControls::Check1, L"Create program", L"Create Media Tonquay program from ripped tracks"},
    Caption{&CdriptabControls::Check2, L"Turbo Mode", L"Rip and Encode tracks at the same time"},
    Caption{&CdriptabControls::Check3, L"Auto Select All Tracks ", L"Select every track when the ripper starts"},
    Caption{&CdriptabControls::Check4, L"Enable CRC Check", L"Have the encoder put checksums into MP3 files"},
    Caption{&CdriptabControls::Check5, L"Enable high priority encoding",
            L"With LAME a bitrate that follows the music; with other encoders more of the processor"},
    Caption{&CdriptabControls::Check6, L"Encoder Cmd Line:", L"Switches of your own in place of the ones chosen here"},
    Caption{&CdriptabControls::Check7, L"File Extension:", L"Another ending of the encoded files, for BladeEnc"},
    Caption{&CdriptabControls::Check8, L"Create directory using Artist name", L"One folder for each artist"},
    Caption{&CdriptabControls::Check9, L"Create directory using Artist\\Album names",
            L"A folder for each album in the artist's"},
    Caption{&CdriptabControls::Check12, L"Minimize CD Ripper during encoding",
            L"Get the window out of the way while a batch is encoded"},
    Caption{&CdriptabControls::Check13, L"Auto Close ", L"End the program after each run"},
};

}

CdriptabControls::CdriptabControls()
{
    form.caption = L"CD-Tonquay - CD Ripper Setup & Utilities";
    form.design = [this] { resetToDesign(); };
    Label4.caption = L"Rip to:";
    Label12.caption = L"Encoder";
    Label12.toolTip = L"Double-click to choose the program";
    Label7.caption = L"Rip Mode:";
    Label17.caption = L"Quality";
    Label17.toolTip = L"Double-click to see what the numbers mean";
    Label13.caption = L"P4 (Intel Pentium) CPU detected";
    constexpr std::array formats{L"MP3 ", L"WAV ", L"OGG ", L"WMA "};
    for (std::size_t i = 0; i < formats.size(); ++i)
        riptofile[i].caption = formats[i];
    riptofile[mp3Format].toolTip = L"Encode to MP3 files";
    riptofile[wavFormat].toolTip = L"If checked, do not delete intermediate WAV file";
    riptofile[oggFormat].toolTip = L"Encode to Ogg Vorbis files";
    riptofile[wmaFormat].toolTip = L"Encode to Windows Media files, without another program";
    constexpr std::array names{L"Track name",          L"Track number",       L"Artist", L"Album", L"Artist - Album",
                               L"Artist - Track name", L"Track number - name"};
    for (std::size_t i = 0; i < names.size(); ++i)
        Option1[i].caption = names[i];
    Option2[0].caption = L"Mono";
    Option2[1].caption = L"Stereo";
    Option4[0].caption = L"Encode as Batch";
    Option4[1].caption = L"Encode Single";
    SSFrame5.caption = L"MP3 Encoding Mode";
    SSFrame4.caption = L"Advanced Settings";
    for (const Caption& box : boxCaptions) {
        (this->*box.box).caption = box.caption;
        (this->*box.box).toolTip = box.toolTip;
    }
    Command12.toolTip = L"Show the other half of the settings";
    cmdOK.caption = L"&OK";
    cmdCancel.caption = L"&Cancel";

    SSFrame7.caption = L"MP3 to WAV Utility";
    Label20.caption = L"Location of MP3 files";
    Label18.caption = L"MP3 file(s) to convert to WAV:";
    Command14.caption = L"Add -->";
    Command14.toolTip = L"Put the selected files into the queue";
    Command15.caption = L"ALL -->";
    Command15.toolTip = L"Put all files of this folder into the queue";
    Command16.caption = L"Clear -->";
    Command16.toolTip = L"Empty the queue";
    Command13.caption = L"<-- Clear";
    Command13.toolTip = L"Select no file";
    Command10.caption = L"Remove";
    Command10.toolTip = L"Take the selected files out of the queue";
    Command17.toolTip = L"Write a WAV file beside each MP3 file of the queue";
    resetToDesign();
}

void CdriptabControls::resetToDesign()
{
    for (controls::ChoiceList* list : {&List2, &List3, &List4})
        list->clear();
    List5.clear();
    List6.clear();
    for (controls::TextBox* box : {&Text1, &Text2, &Text3, &Text11}) {
        box->text = L"";
        box->enabled = true;
    }
    Text1.enabled = false;
    Text2.enabled = false;
    for (const Caption& box : boxCaptions) {
        (this->*box.box).setValue(0);
        (this->*box.box).enabled = true;
    }
    for (controls::CheckBox& format : riptofile) {
        format.setValue(0);
        format.enabled = true;
    }
    Option1.clear();
    Option2.clear();
    Option3.clear();
    Option4.clear();
    for (controls::OptionButton& option : Option2)
        option.enabled = true;
    for (controls::OptionButton& option : Option3)
        option.enabled = true;
    Check2.enabled = false;
    Check5.caption = std::wstring(highPriorityCaption);
    Check5.visible = true;
    SSFrame1.enabled = true;
    SSFrame1.visible = true;
    SSFrame4.visible = false;
    SSFrame5.enabled = true;
    showBitrates(*this);
    Command12.caption = std::wstring(advancedCaption);
    Label3.caption = L"Output directory";
    Label17.visible = false;
    Label17.enabled = true;
    Label13.visible = false;
    Text11.visible = false;
    Label8.caption = L"Required to decode MP3 to WAV";
    Command17.enabled = false;
    Image1[0].visible = true;
    Image1[1].visible = false;
    converting = Mp3InHand{};
    tagPage.resetToDesign();
    focusWanted = SetupFocus::none;
    tab = settingsTab;
}

void showBitrates(CdriptabControls& setup)
{
    setup.SSFrame1.caption = L"Encoding Bitrate";
    for (std::size_t i = 0; i < bitrateCaptions.size(); ++i) {
        setup.Option3[i].caption = bitrateCaptions[i];
        setup.Option3[i].visible = true;
    }
}

void showOggQualities(CdriptabControls& setup)
{
    setup.SSFrame1.caption = L"Encoding Quality (0=lowest, 10=highest)";
    for (std::size_t i = 0; i < bitrateCaptions.size(); ++i) {
        setup.Option3[i].visible = i < oggQualities;
        if (i < oggQualities)
            setup.Option3[i].caption = base::str(static_cast<std::int64_t>(i));
    }
}

}
