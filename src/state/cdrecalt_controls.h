#pragma once

#include "controls/buttons.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/lists.h"
#include "controls/text_box.h"
#include "controls/timer.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tonquay::state {

/// The captions beside the fields, by index.
enum CaptureCaption : std::size_t {
    availableTracksCaption = 0,
    recordTracksCaption = 1,
    filenameCaption = 2,
    discIdCaption = 3,
    trackCountCaption = 4,
};

/// The row of both lists that ends a group. It rides on no track, so its number is 0.
inline constexpr std::wstring_view groupMarker = L"--- Group ---";

/// Analog capture. The number on a row of the lists is that of its track.
struct CdrecaltControls {
    controls::Form form;

    controls::ChoiceList lstTracks; ///< sorted: the group marker in row 0, so track n in row n while all are there
    controls::ChoiceList lstRecord; ///< what is to be recorded, in the order of adding
    controls::Button cmdTo;         ///< moves a row to what is to be recorded
    controls::Button cmdFrom;       ///< and back
    controls::TextBox txtFile;      ///< where the recording goes
    controls::Label lblCDID;
    controls::Label lblNumTracks;
    controls::Label lblStatus; ///< the track in hand
    controls::Button cmdStart;
    controls::Button cmdCancel;
    controls::Button cmdRefresh;             ///< reads the disc anew
    std::array<controls::Label, 5> captions; ///< by CaptureCaption
    controls::Timer tmrRecord{std::chrono::milliseconds{10}};

    CdrecaltControls();
};

}
