#pragma once

#include "controls/buttons.h"
#include "controls/displays.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/lists.h"
#include "controls/slider.h"
#include "controls/text_box.h"
#include "controls/timer.h"

#include <array>
#include <chrono>

namespace tonquay::state {

/// cmdButton by index.
enum EngineButton : std::size_t {
    enginePlay = 0,
    enginePause = 1,
    engineStop = 2,
    engineLock = 3,
    engineUnlock = 4,
    engineOpen = 5,
    engineClose = 6,
    engineExtract = 7,
    engineFadeOut = 8,
    engineDriveInfo = 9,
};

/// chkRWFlags by index, past the bits of the drive's abilities.
enum DriveFlag : std::size_t {
    abilityFlags = 11, ///< the number of ability bits, at 0 to 10
    canOpenFlag = 11,
    canLockFlag = 12,
    lockedFlag = 13,
    openFlag = 14,
};

/// txtWMATags by index.
enum WmaTag : std::size_t { wmaTitle = 0, wmaAuthor = 1, wmaAlbum = 2, wmaDescription = 3, wmaGenre = 6, wmaYear = 7 };

/// The engine's own form. It lies off the screen; the main window and the setup page read and set its controls.
struct Cdrip1Controls {
    static constexpr std::int32_t plainWidth = 7515; ///< twips
    static constexpr std::int32_t driveInfoWidth = 11490;
    static constexpr std::chrono::milliseconds positionInterval{50};

    controls::Form form;

    controls::ComboBox cmbCDDrives; ///< item data: the engine's drive number
    controls::ChoiceList lstTracks;
    controls::TextBox txtCDArtist;
    controls::TextBox txtCDAlbum;
    std::array<controls::TextBox, 8> txtWMATags; ///< by WmaTag
    controls::CheckBox chkWMAFileTags;
    controls::ComboBox cmbWMAEncodingBitrate;             ///< item data: bits per second
    std::array<controls::OptionButton, 2> optExtractMode; ///< WAV, WMA
    controls::Property<bool> picWMAExtractOptionsVisible{false};

    std::array<controls::Button, 10> cmdButton; ///< by EngineButton
    controls::Slider SliderVolume{{-100, 0, -50}, controls::Slider::OnCode::fires};
    controls::Slider SliderBalance{{-100, 100, 0}, controls::Slider::OnCode::fires};
    controls::Slider SliderPosition{{0, 10000, 0}, controls::Slider::OnCode::silent};
    controls::Label lblVolume;
    controls::Label lblBalance;
    controls::Label lblTrackPosition;

    std::array<controls::CheckBox, 15> chkRWFlags; ///< by DriveFlag; a display
    controls::Label lblMaxReadSpeed;
    controls::Label lblCacheSize;
    controls::Property<bool> trackListTabsSet{false};

    controls::Timer tmrPlaybackPosition{positionInterval};

    Cdrip1Controls();

    /// Puts every control back to what it is before the form is loaded.
    void resetToDesign();
};

}
