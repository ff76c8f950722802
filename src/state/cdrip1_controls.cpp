#include "state/cdrip1_controls.h"

namespace tonquay::state {

namespace {

constexpr std::array buttonCaptions{L"&Play", L"P&ause/Resume", L"&Stop",    L"&Lock",     L"&Unlock",
                                    L"&Open", L"&Close",        L"&Extract", L"&Fade Out", L"&Drive Info >>"};

constexpr std::array flagCaptions{L"Drive can read CD-R media",
                                  L"Drive can read CD-RW media",
                                  L"Drive can read CD-R/RW media \"method 2\"",
                                  L"Drive can read DVD-ROM media",
                                  L"Drive can read DVD-R media",
                                  L"Drive can read DVD-RAM media",
                                  L"Drive can read in \"mode 2 form 1\" format",
                                  L"Drive can read in \"mode 2 form 2\" format",
                                  L"Drive can read multi-session discs",
                                  L"Drive can read CD audio",
                                  L"Drive supports \"stream is accurate\"",
                                  L"Drive can be opened / closed",
                                  L"Drive can be locked",
                                  L"Drive is locked",
                                  L"Drive is open"};

}

Cdrip1Controls::Cdrip1Controls()
{
    form.caption = L"CD-Tonquay - CD Ripper";
    form.design = [this] { resetToDesign(); };
    optExtractMode[0].caption = L"&WAV File";
    optExtractMode[1].caption = L"W&MA File";
    chkWMAFileTags.caption = L"WMA File Tags";
    for (std::size_t i = 0; i < flagCaptions.size(); ++i)
        chkRWFlags[i].caption = flagCaptions[i];
    resetToDesign();
}

void Cdrip1Controls::resetToDesign()
{
    constexpr std::int32_t offScreen = 99996;
    form.left = offScreen;
    form.top = offScreen;
    form.width = driveInfoWidth;
    form.enabled = true;
    cmbCDDrives.clear();
    lstTracks.clear();
    cmbWMAEncodingBitrate.clear();
    txtCDArtist.text = L"";
    txtCDAlbum.text = L"";
    for (controls::TextBox& box : txtWMATags)
        box.text = L"";
    for (std::size_t i = 0; i < cmdButton.size(); ++i) {
        cmdButton[i].caption = buttonCaptions[i];
        cmdButton[i].enabled = true;
    }
    optExtractMode[0].setValue(false);
    optExtractMode[1].setValue(true);
    picWMAExtractOptionsVisible = true;
    chkWMAFileTags.setValue(1);
    for (controls::CheckBox& flag : chkRWFlags)
        flag.setValue(0);
    for (controls::Slider* slider : {&SliderVolume, &SliderBalance, &SliderPosition})
        slider->reset();
    for (controls::Label* label : {&lblVolume, &lblBalance, &lblTrackPosition, &lblMaxReadSpeed, &lblCacheSize})
        label->caption = L"";
    trackListTabsSet = false;
    tmrPlaybackPosition.setEnabled(false);
    tmrPlaybackPosition.setInterval(positionInterval);
}

}
