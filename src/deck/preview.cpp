#include "deck/preview.h"

#include "base/numbers.h"
#include "base/text.h"
#include "platform/acd_control.h"
#include "platform/audio_engine.h"

namespace tonquay::deck {

using platform::AudioEngine;

namespace {

constexpr std::int32_t toTheEnd = -1;

}

Preview::Preview(state::AppState& state, state::Forms& forms, engine::Playback& playback, platform::Platform& platform)
    : state_(state),
      forms_(forms),
      main_(forms.ripdeck()),
      playback_(playback),
      platform_(platform)
{
    const auto onRelease = [this](state::TransportKey key, void (Preview::*command)()) {
        main_.icntla[key].mouseUp = [this, key, command](controls::MouseButton) {
            const bool paused = key == state::pauseButton && pausePictureShows_;
            main_.icntla[key].picture = paused ? state::runningLook : state::idleLook;
            (this->*command)();
        };
    };
    onRelease(state::previousButton, &Preview::previous);
    onRelease(state::nextButton, &Preview::next);
    onRelease(state::playButton, &Preview::play);
    onRelease(state::pauseButton, &Preview::pause);
    onRelease(state::ejectButton, &Preview::eject);
    main_.LabelP[0].mouseUp = [this](controls::MouseButton) { startByControl(); };
    main_.LabelP[1].mouseUp = [this](controls::MouseButton) {
        if (!streamIsTheRuns())
            endPreview();
    };
    main_.Trackprogress.mouseUp = [this](double fraction) { seek(fraction); };
}

bool Preview::streamIsTheRuns() const
{
    return usesEngine() && state_.flags.ripBusy == 1 && state_.flags.encodeOnly != 1;
}

void Preview::previous()
{
    const auto row = static_cast<std::int32_t>(base::val(main_.Label8.caption.get())) - 2;
    if (row >= 0)
        startRow(row);
}

void Preview::next()
{
    const auto row = static_cast<std::int32_t>(base::val(main_.Label8.caption.get()));
    if (row < main_.list1.rowCount())
        startRow(row);
}

void Preview::startRow(std::int32_t row)
{
    if (streamIsTheRuns())
        return;
    main_.list1.setCursor(row);
    if (!usesEngine() && state_.flags.previewActive == 1)
        platform_.acd.AbortRip();
    showRow(row);
}

void Preview::showRow(std::int32_t row)
{
    const std::int32_t number = row + 1;
    if (usesEngine()) {
        playback_.stop();
        forms_.cdrip1();
        playback_.PlayTrack(row);
    } else {
        state_.engine.acdResult = platform_.acd.PlayTrack(static_cast<std::int16_t>(number), 0, toTheEnd);
    }
    setPaused(false);
    showBegun(number);
}

void Preview::showBegun(std::int32_t number)
{
    state_.flags.previewActive = 1;
    main_.Label8.caption = base::digits(number);
    main_.Label13.caption = std::wstring(base::trim(state_.disc.trackTitles(number)));
    main_.Label66.colour = state_.theme.highlight();
}

void Preview::showEnded()
{
    main_.Label8.caption = L"0";
    main_.Label13.caption = L"";
    main_.Label66.colour = state_.theme.normal();
}

void Preview::play()
{
    if (streamIsTheRuns())
        return;
    main_.Label66.caption = L"Preview";
    if (pausePictureShows_) {
        if (usesEngine())
            playback_.pauseOrResume();
        else
            platform_.acd.ResumePlay();
        setPaused(false);
    } else if (state_.flags.previewActive != 1) {
        showRow(main_.list1.cursor());
    }
}

void Preview::pause()
{
    if (streamIsTheRuns())
        return;
    main_.Label66.caption = L"Pause";
    if (!usesEngine()) {
        platform_.acd.PausePlay();
        setPaused(true);
        return;
    }
    playback_.pauseOrResume();
    // The key is a toggle on this path, so its picture shows what came of it.
    setPaused(platform_.engine.BASS_ChannelIsActive(state_.engine.audioStream) == AudioEngine::paused);
}

void Preview::setPaused(bool paused)
{
    pausePictureShows_ = paused;
    main_.icntla[state::pauseButton].picture = paused ? state::runningLook : state::idleLook;
}

void Preview::stop()
{
    main_.Label66.caption = L"Preview";
    main_.Trackprogress.value = std::int16_t{0};
    main_.Totalprogress.value = std::int16_t{0};
    setPaused(false);
    if (!usesEngine()) {
        platform_.acd.StopPlay();
    } else if (!streamIsTheRuns()) {
        playback_.stop();
        main_.lblTrackTot.caption = L"00:00";
    }
    if (state_.flags.previewActive != 1)
        return;
    state_.flags.previewActive = 0;
    if (!usesEngine())
        platform_.acd.StopPlay();
    showEnded();
}

void Preview::eject()
{
    if (usesEngine()) {
        // A drive that cannot be locked would open in the middle of the track in hand.
        if (!streamIsTheRuns()) {
            playback_.stop();
            playback_.openDoor(static_cast<std::uint32_t>(state_.engine.selectedDriveIndex));
        }
    }
    if (state_.flags.previewActive == 1)
        endPreview();
    if (state_.settings.ripMethod == state::analogMethod && forms_.loaded<state::CdrecaltControls>())
        forms_.cdrecalt().cmdCancel.click();
    platform_.acd.AbortRip();
    platform_.acd.Eject();
}

void Preview::startByControl()
{
    if (streamIsTheRuns() || state_.flags.previewActive == 1)
        return;
    const std::int32_t number = main_.list1.cursor() + 1;
    state_.engine.acdResult = platform_.acd.PlayTrack(static_cast<std::int16_t>(number), 0, toTheEnd);
    showBegun(number);
}

void Preview::endPreview()
{
    state_.flags.previewActive = 0;
    setPaused(false);
    platform_.acd.StopPlay();
    showEnded();
}

void Preview::seek(double fraction)
{
    if (usesEngine() && !streamIsTheRuns())
        playback_.seek(fraction);
}

}
