#include "rip/track_extraction.h"

#include "base/numbers.h"
#include "base/text.h"
#include "platform/acd_control.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "state/settings_text.h"

#include <algorithm>
#include <limits>

namespace tonquay::rip {

namespace {

constexpr controls::Colour partialDark = 128;

controls::Colour partialBright(const state::Theme& theme)
{
    constexpr controls::Colour red = 255;
    return theme.useThemeColours == 1 ? theme.themeColourA : red;
}

std::int32_t wholeMs(double value)
{
    return static_cast<std::int32_t>(std::clamp(value, 0.0, double{std::numeric_limits<std::int32_t>::max()}));
}

}

void TrackExtraction::extract(std::int32_t row, const std::wstring& wavPath)
{
    if (state_.settings.ripMethod == state::analogMethod)
        captureAnalog(row, wavPath);
    else if (state_.path.ripEngineMode == 1)
        extractByControl(row, wavPath);
    else
        extractByEngine(row, wavPath);
}

void TrackExtraction::handOverCounters()
{
    state_.run.ripProgressTotal = static_cast<std::int16_t>(state_.run.selectedCount);
    state_.run.ripProgressNumber = static_cast<std::int16_t>(state_.run.rippedCount);
}

void TrackExtraction::captureAnalog(std::int32_t row, const std::wstring& wavPath)
{
    state_.run.analogTrack = static_cast<std::int16_t>(row + 1);
    state_.flags.analogBusy = 1;
    // The capture's save command takes its path without quotes, so the name may hold no blank.
    const std::wstring name = base::replaced(base::trim(state_.run.currentName), L' ', L'_');
    state_.run.analogTempPath = state::inFolder(state_.folders.windowsFolder, name + L".wav");
    handOverCounters();
    controls::Form& capture = forms_.controlsOf<state::CdrecaltControls>().form;
    capture.unload();
    capture.show();
    platform::waitUntil(platform_.loop, [this] { return state_.flags.analogBusy != 1; });
    capture.unload();
    passOver(platform_.log, platform_.files.rename(state_.run.analogTempPath, wavPath), "Rename the captured file");
}

void TrackExtraction::extractByControl(std::int32_t row, const std::wstring& wavPath)
{
    const auto track = static_cast<std::int16_t>(row + 1);
    controls::Label& partialLabel = forms_.ripdeck().Label6[state::partialCaption];
    state_.flags.acdTrackDone = false;
    std::int16_t failed = 0;
    if (state_.partial.partialLengthMs(track) > 0) {
        partialLabel.colour = partialBright(state_.theme);
        failed = platform_.acd.RipPartial(track, wavPath, wholeMs(state_.partial.partialStartMs(track)),
                                          wholeMs(state_.partial.partialLengthMs(track)));
    } else {
        partialLabel.colour = partialDark;
        failed = platform_.acd.RipTrack(track, wavPath);
    }
    state_.engine.acdResult = failed;
    if (failed > 0) {
        platform_.dialogs.messageBox(L"CD-Tonquay",
                                     L"Unable to Read Track: " + base::digits(track) + L"  " +
                                         std::wstring(base::trim(state_.disc.trackTitles(track))),
                                     platform::Dialogs::Icon::exclamation);
        return;
    }
    platform::waitUntil(platform_.loop, [this] { return state_.flags.acdTrackDone; });
}

void TrackExtraction::extractByEngine(std::int32_t row, const std::wstring& wavPath)
{
    state::Cdrip1Controls& form = forms_.cdrip1();
    state_.run.ripTargetPath = wavPath;
    handOverCounters();
    if (state_.settings.ripToWma == 1) {
        form.txtWMATags[state::wmaTitle].text = std::wstring(base::trim(state_.disc.trackTitles(row + 1)));
        engine_.ExtractAudioTrackToWMA(row, state_.run.wmaBitrate);
    } else {
        engine_.ExtractAudioTrackToWav(row);
    }
}

}
