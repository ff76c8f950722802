#include "engine/position_timer.h"

#include "base/numbers.h"
#include "engine/level_word.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace tonquay::engine {

namespace {

std::int16_t percent(double value)
{
    return static_cast<std::int16_t>(std::clamp(value, 0.0, 100.0));
}

std::wstring percentText(std::int16_t value)
{
    return base::str(value) + L'%';
}

}

PositionTimer::PositionTimer(EngineContext& context, std::function<void()> loadTrackList)
    : c_(context),
      loadTrackList_(std::move(loadTrackList))
{
    c_.form.tmrPlaybackPosition.tick = [this] { tick(); };
    c_.form.SliderPosition.mouseDown = [this] { seekingPosition_ = true; };
    c_.form.SliderPosition.mouseUp = [this] { seekingPosition_ = false; };
}

void PositionTimer::tick()
{
    watchDoor();
    const bool active = c_.engine.BASS_ChannelIsActive(c_.stream()) != platform::AudioEngine::stopped;
    settle(active);
    if (!active) {
        c_.form.SliderPosition.setValue(0);
        c_.form.lblTrackPosition.caption = L"";
        for (controls::VuMeter& meter : c_.ripdeck.picVUMeter)
            meter.clear();
    }
    showLevels();
    if (!seekingPosition_)
        showPosition();
}

void PositionTimer::settle(bool active)
{
    constexpr int settled = 20;
    constexpr std::chrono::milliseconds idleInterval{500};
    const bool open = c_.form.chkRWFlags[state::openFlag].value() == 1;
    const bool moved = active || open != std::exchange(doorWasOpen_, open);
    c_.quietTicks = moved ? 0 : std::min(c_.quietTicks + 1, settled);
    c_.form.tmrPlaybackPosition.setInterval(c_.quietTicks == settled ? idleInterval
                                                                     : state::Cdrip1Controls::positionInterval);
}

void PositionTimer::watchDoor()
{
    const bool open = c_.engine.BASS_CD_DoorIsOpen(c_.engineDrive);
    c_.form.chkRWFlags[state::openFlag].setValue(open ? 1 : 0);
    c_.form.chkRWFlags[state::lockedFlag].setValue(c_.engine.BASS_CD_DoorIsLocked(c_.engineDrive) ? 1 : 0);
    const bool listed = c_.form.lstTracks.rowCount() > 0;
    if (!open && !listed) {
        loadTrackList_();
    } else if (open && listed) {
        // A stream that is being extracted ends on its own terms, so that a short file never looks whole.
        if (!c_.extracting)
            c_.engine.BASS_ChannelStop(c_.stream());
        c_.form.lstTracks.clear();
    }
}

void PositionTimer::showLevels()
{
    // A little under the loudest sample, so that loud music reaches the top of the meter.
    constexpr double fullScale = 30000;
    const std::int32_t level = c_.engine.BASS_ChannelGetLevel(c_.stream());
    auto& [left, right] = c_.ripdeck.picVUMeter;
    if (level == -1) {
        left.clear();
        right.clear();
        return;
    }
    left.show(loWord(level) / fullScale);
    right.show(hiWord(level) / fullScale);
}

void PositionTimer::showPosition()
{
    const std::int64_t length = c_.engine.BASS_ChannelGetLength(c_.stream(), 0);
    const std::int64_t position = c_.engine.BASS_ChannelGetPosition(c_.stream(), 0);
    // A stream without length leaves the ratio of the tick before.
    if (length != 0)
        ratio_ = static_cast<float>(position) / static_cast<float>(length);
    const double ratio = ratio_;

    c_.form.SliderPosition.setValue(
        static_cast<std::int32_t>(base::roundHalfEven(ratio * c_.form.SliderPosition.max())));
    trackPercent_ = percent(base::roundHalfEven(100 * ratio));
    c_.ripdeck.Trackprogress.value = trackPercent_;
    trackPercentText_ = percentText(trackPercent_);
    c_.ripdeck.Label6[state::trackPercentText].caption = trackPercentText_;

    const state::RunInHand& run = c_.state.run;
    totalPercent_ = 0;
    if (run.ripProgressTotal != 0) {
        const double done = (run.ripProgressNumber - 1) * 100.0 + trackPercent_;
        totalPercent_ = percent(std::floor(done / run.ripProgressTotal));
    }
    // The total reaches 100 with the last track and never before it.
    if (totalPercent_ != 100 || trackPercent_ == 100) {
        c_.ripdeck.Totalprogress.value = totalPercent_;
        c_.ripdeck.Label6[state::totalPercentText].caption = percentText(totalPercent_);
    }

    const auto time = [this](std::int64_t bytes) {
        const double seconds = c_.engine.BASS_ChannelBytes2Seconds(c_.stream(), bytes);
        return Seconds2HMS(static_cast<std::int32_t>(base::roundHalfEven(seconds)));
    };
    c_.ripdeck.lblTrackTime.caption = time(position);
    c_.ripdeck.lblTrackTot.caption = time(length);
}

}
