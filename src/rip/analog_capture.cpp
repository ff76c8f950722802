#include "rip/analog_capture.h"

#include "base/numbers.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "rip/percent_display.h"

#include <cmath>

namespace tonquay::rip {

namespace {

constexpr std::wstring_view captureFormat =
    L"set capture samplespersec 44100 channels 2 bitspersample 16 alignment 4 bytespersec 176400";

bool isMarker(const controls::Row& row)
{
    return row.text == state::groupMarker;
}

}

AnalogCapture::AnalogCapture(state::AppState& state, state::Forms& forms, platform::Platform& platform)
    : state_(state),
      form_(forms.controlsOf<state::CdrecaltControls>()),
      main_(forms.ripdeck()),
      platform_(platform),
      disc_(state, form_, platform.mci)
{
    form_.tmrRecord.bind(platform_.loop);
    form_.form.onLoad = [this] { load(); };
    form_.form.onQueryUnload = [this] { queryUnload(); };
    form_.lstTracks.doubleClick = [this] { moveToRecord(); };
    form_.lstRecord.doubleClick = [this] { moveBack(); };
    form_.cmdTo.click = [this] { moveToRecord(); };
    form_.cmdFrom.click = [this] { moveBack(); };
    form_.cmdStart.click = [this] { start(); };
    form_.cmdCancel.click = [this] { cancel(); };
    form_.cmdRefresh.click = [this] { disc_.refresh(); };
    form_.tmrRecord.tick = [this] { tick(); };
}

void AnalogCapture::load()
{
    currentTrack = 0;
    captureStartMs = 0;
    captureStopMs = 0;
    captureFile.clear();
    hasGroup = false;
    disc_.forget();

    disc_.refresh();
    state_.flags.analogBusy = 1;
    if (state_.run.analogTrack > 0)
        form_.lstTracks.setIndex(state_.run.analogTrack);
    moveToRecord();
    start();
}

void AnalogCapture::queryUnload()
{
    if (!form_.tmrRecord.enabled())
        return;
    cancel();
    platform::waitUntil(platform_.loop, [this] { return !form_.tmrRecord.enabled(); });
}

void AnalogCapture::moveToRecord()
{
    using Icon = platform::Dialogs::Icon;
    const std::int32_t index = form_.lstTracks.index();
    if (index < 0)
        return;
    const controls::Row row = form_.lstTracks.chosen();
    const std::int32_t rows = form_.lstRecord.rowCount();
    if (isMarker(row) && rows == 0) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"You must first add some tracks.", Icon::information);
        return;
    }
    if (isMarker(row) && isMarker(form_.lstRecord.row(rows - 1))) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"You must first add some more tracks.", Icon::information);
        return;
    }
    form_.lstRecord.add(row.text, row.itemData);
    if (!isMarker(row))
        form_.lstTracks.remove(index);
}

void AnalogCapture::moveBack()
{
    const std::int32_t index = form_.lstRecord.index();
    if (index < 0)
        return;
    const controls::Row row = form_.lstRecord.chosen();
    if (!isMarker(row))
        form_.lstTracks.addSorted(row.text, row.itemData);
    form_.lstRecord.remove(index);
}

void AnalogCapture::start()
{
    const bool inSequence = scanRecordList();
    if (hasGroup && !inSequence) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"Tracks grouped together must be in sequence.",
                                     platform::Dialogs::Icon::stop);
        return;
    }
    form_.lblStatus.caption = L"";
    setWorking(true);
    form_.lstRecord.setIndex(0);
    recordNext();
}

/// Whether each track follows the one above it. The number of a marker counts in that: what stands below one is out of
/// sequence, unless it is the first track.
bool AnalogCapture::scanRecordList()
{
    bool inSequence = true;
    hasGroup = false;
    for (std::int32_t i = 0; i < form_.lstRecord.rowCount(); ++i) {
        const controls::Row row = form_.lstRecord.row(i);
        if (isMarker(row))
            hasGroup = true;
        else if (i > 0 && form_.lstRecord.row(i - 1).itemData != row.itemData - 1)
            inSequence = false;
    }
    return inSequence;
}

void AnalogCapture::setWorking(bool working)
{
    form_.lblStatus.visible = working;
    form_.cmdCancel.enabled = working;
    for (controls::Button* key : {&form_.cmdStart, &form_.cmdRefresh, &form_.cmdTo, &form_.cmdFrom})
        key->enabled = !working;
    form_.lstTracks.enabled = !working;
    form_.lstRecord.enabled = !working;
    form_.txtFile.enabled = !working;
}

/// The row under the cursor. A step that fails has cancelled the work; those behind it see that, and the next tick
/// closes what is open.
void AnalogCapture::recordNext()
{
    findStretch();
    if (hasGroup)
        takeGroupAlong();
    openCapture();
    if (captureStopMs != 0)
        setFormat();
    if (captureStopMs != 0)
        playAndRecord();
    form_.tmrRecord.setEnabled(true);
}

void AnalogCapture::findStretch()
{
    // Without a row there is no track, and no capture is to run.
    if (form_.lstRecord.index() >= 0)
        currentTrack = form_.lstRecord.chosen().itemData;
    form_.lblStatus.caption = L"Track " + base::digits(currentTrack);
    captureFile = state_.run.analogTempPath;
    captureStartMs = 0;
    captureStopMs = 0;
    for (std::int32_t n = 1; n <= disc_.trackCount() && n != currentTrack; ++n)
        captureStartMs += disc_.lengthMs(n);
    if (disc_.hasTrack(currentTrack))
        captureStopMs = captureStartMs + disc_.lengthMs(currentTrack);
}

void AnalogCapture::takeGroupAlong()
{
    while (!onLastRow()) {
        form_.lstRecord.setIndex(form_.lstRecord.index() + 1);
        const controls::Row row = form_.lstRecord.chosen();
        if (isMarker(row))
            return;
        currentTrack = row.itemData;
        captureStopMs += disc_.lengthMs(currentTrack);
    }
}

void AnalogCapture::openCapture()
{
    if (!succeeds(L"open new type waveaudio alias capture"))
        fail(L"Error opening waveaudio");
}

void AnalogCapture::setFormat()
{
    if (succeeds(captureFormat))
        return;
    platform_.dialogs.messageBox(L"CD-Tonquay", L"Error setting capture recording paramaters",
                                 platform::Dialogs::Icon::stop);
    succeeds(L"close capture");
    cancel();
}

void AnalogCapture::playAndRecord()
{
    if (!succeeds(L"open cdaudio alias cd")) {
        fail(L"Error opening cd!");
        return;
    }
    succeeds(L"set cd time format milliseconds");
    succeeds(L"record capture overwrite");
    if (!succeeds(captureStartMs == 0 ? std::wstring(L"play cd") : L"play cd from " + base::digits(captureStartMs)))
        fail(L"Error playing cd!");
}

void AnalogCapture::fail(std::wstring_view message)
{
    platform_.dialogs.messageBox(L"CD-Tonquay", message, platform::Dialogs::Icon::stop);
    cancel();
}

void AnalogCapture::cancel()
{
    captureStopMs = 0;
    form_.lstRecord.setIndex(form_.lstRecord.rowCount() - 1);
}

void AnalogCapture::tick()
{
    // 0 while no disc is open: a cancelled capture ends all the same.
    std::int32_t position = 0;
    base::store(base::val(answerTo(platform_.mci, L"status cd position")), position);
    if (captureStopMs != 0) {
        static_cast<void>(answerTo(platform_.mci, L"status cd current track"));
        showProgress(position);
    }
    if (position >= captureStopMs)
        endRecording();
}

void AnalogCapture::showProgress(std::int32_t position)
{
    const double stretch = captureStopMs - captureStartMs;
    const std::int16_t track = percentOf(stretch == 0 ? 0 : std::trunc((position - captureStartMs) / stretch * 100));
    if (!showTrackPercent(main_, track))
        return;
    const std::int32_t tracks = state_.run.ripProgressTotal;
    const double done = (state_.run.ripProgressNumber - 1) * 100.0 + track;
    showTotalPercent(main_, percentOf(tracks == 0 ? 0 : std::trunc(done / tracks)), track);
}

void AnalogCapture::endRecording()
{
    form_.tmrRecord.setEnabled(false);
    for (const std::wstring& command :
         {std::wstring(L"stop capture"), std::wstring(L"stop cd"), L"save capture " + captureFile,
          std::wstring(L"close capture"), std::wstring(L"close cd")})
        succeeds(command);
    if (!onLastRow()) {
        form_.lstRecord.setIndex(form_.lstRecord.index() + 1);
        recordNext();
        return;
    }
    state_.flags.analogBusy = 0;
    setWorking(false);
}

bool AnalogCapture::onLastRow() const
{
    return form_.lstRecord.index() == form_.lstRecord.rowCount() - 1;
}

bool AnalogCapture::succeeds(std::wstring_view command)
{
    return platform_.mci.mciSendString(command) == 0;
}

}
