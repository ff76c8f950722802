#include "rip/rip_driver.h"

#include "base/numbers.h"
#include "base/text.h"
#include "encode/bitrates.h"
#include "encode/encoder_kind.h"
#include "naming/file_name.h"
#include "naming/nonasc.h"
#include "naming/output_folder.h"
#include "platform/acd_control.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "rip/running_look.h"

#include <chrono>
#include <utility>

namespace tonquay::rip {

namespace {

/// Lets the last encoder's file settle before the tagger opens it, and the Power key show as pressed.
constexpr std::chrono::milliseconds settleTime{300};

bool sameDrive(std::wstring_view left, std::wstring_view right)
{
    return !left.empty() && !right.empty() && base::upper(left.front()) == base::upper(right.front());
}

}

void RipDriver::recstart()
{
    if (runIsOn())
        return;
    if (main_.list1.selectedCount() == 0) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"No track(s) selected!", platform::Dialogs::Icon::exclamation);
        return;
    }

    prepare();
    Phase phase = ripTracks();
    if (phase == Phase::afterTracks) {
        showTracksDone(main_);
        phase = choosePhase();
    }
    if (phase == Phase::sweep) {
        sweepWavs();
        phase = Phase::tag;
    }
    if (phase == Phase::tag)
        tagFiles();
    finish();
}

bool RipDriver::runIsOn() const
{
    return main_.Label6[state::statusLabel].caption.get() == L"Encoding" || state_.flags.ripBusy == 1;
}

void RipDriver::prepare()
{
    state::RipSettings& settings = state_.settings;
    state_.flags.encodeBusy = 0;
    state_.flags.ripBusy = 1;
    state_.flags.analogBusy = 0;
    settings.encoderPath = base::upper(base::trim(settings.encoderPath));
    if (state_.path.ripEngineMode == 1 && settings.ripMethod < state::analogMethod)
        platform_.acd.SetRipMode(settings.ripMethod);
    keptWavList_.clear();
    state_.run.selectedCount = main_.list1.selectedCount();
    state_.run.rippedCount = 0;
    showRunningLook(main_, state_.theme);

    state_.disc.discArtist = naming::nonasc(base::trim(state_.disc.discArtist));
    state_.disc.discAlbum = naming::nonasc(base::trim(state_.disc.discAlbum));
    state_.run.destFolder = naming::makeOutputFolder(platform_.files, platform_.log, settings, state_.disc);
    copyBladeToOutput();
    if (encoderNameHas(L"OGG"))
        settings.encodeWanted = 1;
    if (settings.ripToWma == 1 && state_.path.ripEngineMode == 0)
        state_.run.wmaBitrate = encode::bitsPerSecond(settings.bitrateIndex).value_or(state_.run.wmaBitrate);
    findLastSelected();
}

void RipDriver::copyBladeToOutput()
{
    // This encoder's batch reads its WAV files by wildcard and so has to lie on their drive.
    state::RipSettings& settings = state_.settings;
    if (!encoderNameHas(L"BLADE") || settings.encodeSingle != 0 ||
        sameDrive(settings.encoderPath, settings.outputFolder))
        return;
    const std::wstring copy = settings.outputFolder + L"\\bladeenc.exe";
    passOver(platform_.log, platform_.files.copy(settings.encoderPath, copy), "Copy the encoder to the output folder");
    settings.encoderPath = copy;
}

void RipDriver::findLastSelected()
{
    state_.run.lastSelected = 0;
    if (state_.settings.turboMode != 1)
        return;
    for (std::int32_t row = main_.list1.rowCount() - 1; row >= 0; --row) {
        if (main_.list1.isSelected(row)) {
            state_.run.lastSelected = row;
            return;
        }
    }
}

/// Walks every row, selected or not: the titles of all rows are cleaned, the selected ones are ripped.
RipDriver::Phase RipDriver::ripTracks()
{
    const std::int32_t rows = main_.list1.rowCount();
    for (std::int32_t row = 0; row < rows; ++row) {
        cleanTitle(row);
        // Asked for each row anew: the Stop command clears the selection while a track before it is read.
        if (!main_.list1.isSelected(row))
            continue;
        switch (ripTrack(row)) {
        case TrackEnd::next: break;
        case TrackEnd::stop: return Phase::afterTracks;
        case TrackEnd::endRun: return Phase::finish;
        }
    }
    return Phase::afterTracks;
}

void RipDriver::cleanTitle(std::int32_t row)
{
    state_.disc.trackTitles.set(row + 1, naming::nonasc(base::trim(state_.disc.trackTitles(row + 1))));
}

RipDriver::TrackEnd RipDriver::ripTrack(std::int32_t row)
{
    const std::int32_t number = row + 1;
    state::RunInHand& run = state_.run;
    run.currentName = naming::fileName(state_.settings.nameFormat, state_.disc, number, naming::shortestRippedName);
    if (state_.settings.deleteWav != 1)
        keptWavList_ += L" \"" + run.currentName + L".wav\"";
    if (state_.flags.encodeOnly == 1)
        return TrackEnd::next;

    main_.Label8.caption = base::digits(number);
    main_.Label13.caption = std::wstring(base::trim(state_.disc.trackTitles(number)));
    const std::wstring wavPath = naming::joined(run.destFolder, run.currentName + L".wav");
    ++run.rippedCount;
    extraction_.extract(row, wavPath);
    // A failed track is no reason to leave: its encoder step and the next tracks follow.
    if (state_.flags.stopRequested == 1)
        return TrackEnd::stop;
    if (state_.settings.ripToWma == 1 || state_.settings.encodeSingle != 1 || !encoderIsWanted())
        return TrackEnd::next;
    const auto next = encoders_.encodeTrack(row);
    main_.Label6[state::statusLabel].caption = L"Recording";
    return next == encode::EncoderPipeline::Next::finish ? TrackEnd::endRun : TrackEnd::next;
}

RipDriver::Phase RipDriver::choosePhase()
{
    const state::RipSettings& settings = state_.settings;
    if (settings.ripToWma == 1)
        return Phase::finish;
    // A stopped run writes no program file and encodes no batch; under Turbo it still takes the road of the sweep.
    if (std::exchange(state_.flags.stopRequested, std::int16_t{0}) == 1)
        return turboSweeps() ? Phase::sweep : Phase::finish;
    if (settings.createProgram == 1)
        programFiles_.savepgm(0);
    if (!encoderIsWanted())
        return Phase::finish;
    if (turboSweeps())
        return Phase::sweep;
    if (settings.encodeSingle == 1)
        return Phase::tag;
    return phaseAfter(encoders_.encodeBatch(keptWavList_));
}

RipDriver::Phase RipDriver::phaseAfter(encode::EncoderPipeline::Next next)
{
    switch (next) {
    case encode::EncoderPipeline::Next::sweep: return Phase::sweep;
    case encode::EncoderPipeline::Next::tag: return Phase::tag;
    default: return Phase::finish;
    }
}

void RipDriver::sweepWavs()
{
    const std::wstring& folder = state_.run.destFolder;
    passOver(platform_.log, platform_.files.changeFolder(folder), "Change to the output folder");
    passOver(platform_.log, platform_.files.changeDrive(folder), "Change to the output folder's drive");
    for (std::int32_t row = 0; row < main_.list1.rowCount(); ++row) {
        if (!main_.list1.isSelected(row))
            continue;
        state_.run.currentName =
            naming::fileName(state_.settings.nameFormat, state_.disc, row + 1, naming::shortestRebuiltName);
        // The full path: after a change of folder that failed a bare name would be another folder's file.
        const std::wstring wav = naming::joined(folder, state_.run.currentName + L".wav");
        if (platform_.files.fileExists(wav))
            passOver(platform_.log, platform_.files.remove(wav), "Delete a WAV file");
    }
}

void RipDriver::tagFiles()
{
    // Ogg files have their tags from the encoder's command line.
    if (encoderNameHas(L"OGG"))
        return;
    platform_.clock.delay(settleTime);
    state::showTagger(forms_.controlsOf<state::Id3autoControls>(), state_.flags, state::tagRun);
}

void RipDriver::finish()
{
    showIdleLook(main_, state_.theme);
    state_.flags.encodeBusy = 0;
    state_.flags.ripBusy = 0;
    // A Stop that came after its last chance, and the counters of this run, are nothing to what comes next.
    state_.flags.stopRequested = 0;
    state_.run.ripProgressTotal = 0;
    main_.list1.deselectAll();
    if (state_.settings.minimizeWhileEncoding == 1)
        main_.form.windowState = controls::Form::WindowState::normal;
    if (state_.settings.autoClose == 1)
        pressPower();
}

void RipDriver::pressPower()
{
    // The tagger has done all its work while it loaded, so the flag is down by now.
    main_.Label28.mouseDown(controls::MouseButton::left);
    platform_.clock.delay(settleTime);
    main_.Label28.mouseUp(controls::MouseButton::left);
}

bool RipDriver::encoderNameHas(std::wstring_view word) const
{
    return encode::pathNames(state_.settings.encoderPath, word);
}

bool RipDriver::encoderIsWanted() const
{
    return !base::isBlank(state_.settings.encoderPath) && state_.settings.encodeWanted == 1;
}

bool RipDriver::turboSweeps() const
{
    return state_.settings.turboMode == 1 && state_.settings.deleteWav == 1;
}

}
