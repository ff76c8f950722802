#pragma once

#include "controls/displays.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/lists.h"
#include "controls/slider.h"
#include "controls/timer.h"

#include <array>
#include <chrono>

namespace tonquay::state {

/// Label6 by index.
enum StatusLabel : std::size_t {
    trackProgressCaption = 0,
    totalProgressCaption = 1,
    totalPercentText = 2,
    trackPercentText = 3,
    discCaption = 5,
    ripperCaption = 6,
    statusLabel = 7, ///< "Recording" or "Encoding"
    partialCaption = 8,
    yearLabel = 9,
    genreLabel = 10,
    commentLabel = 11,
};

/// icntla by index: the transport keys.
enum TransportKey : std::size_t {
    previousButton = 0,
    nextButton = 1,
    playButton = 2,
    pauseButton = 3,
    stopButton = 4,
    ejectButton = 5,
    startButton = 6,
};

/// image10 by index: the command keys.
enum CommandKey : std::size_t {
    playerKey = 0,
    setupKey = 1,
    tagUtilityKey = 2,
    partialKey = 3,
    refreshKey = 4,
    selectAllKey = 5,
    clearAllKey = 6,
    discTagsKey = 7,
    ripKey = 8,
};

/// The looks of a transport key.
enum KeyLook : int { idleLook = 0, pressedLook = 1, runningLook = 2 };

/// The main window.
struct RipdeckControls {
    static constexpr std::int32_t captionFontSize = 14; ///< points, of artist, album and title in the design

    controls::Form form;

    controls::MultiSelectList list1;        ///< the track list
    std::array<controls::Label, 4> Label5;  ///< its headings
    std::array<controls::Label, 12> Label6; ///< by StatusLabel
    controls::Label Label8;                 ///< number of the track in work, "0" when none
    controls::Label Label12;                ///< artist and album
    controls::Label Label13;                ///< title of the track in work
    controls::Label Label28;                ///< the Power control
    controls::Label Label2;                 ///< puts the balance in the middle
    controls::Label tqtxt;                  ///< opens the popup menu
    controls::Label Label66;                ///< lit during a preview
    std::array<controls::Label, 2> LabelP;  ///< preview on, preview off
    controls::Label lblTrackTime;
    controls::Label lblTrackTot;

    std::array<controls::Image, 7> icntla;  ///< by TransportKey
    std::array<controls::Image, 9> image10; ///< by CommandKey
    std::array<controls::Label, 9> Label10; ///< their captions, which carry the same commands
    controls::Image Image95;                ///< opens the popup menu
    controls::Image Image15;                ///< starts the mixer
    controls::Image mixicon;                ///< likewise; the mixer's own picture

    controls::ProgressPanel Trackprogress;
    controls::ProgressPanel Totalprogress;
    std::array<controls::VuMeter, 2> picVUMeter; ///< left, right

    controls::Property<std::int32_t> listBorderColour{0};
    controls::Panel SSPanel1; ///< carries volume and balance
    controls::Panel SSPanel2; ///< puts the volume in the middle
    controls::Slider SliderVolume{{-100, 0, -50}, controls::Slider::OnCode::fires};
    controls::Slider SliderBalance{{-100, 100, 0}, controls::Slider::OnCode::fires};

    controls::Timer Timer1{std::chrono::milliseconds(500)};

    RipdeckControls();
};

}
