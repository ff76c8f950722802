#include "engine/playback.h"

#include "base/format.h"
#include "base/numbers.h"

#include <cmath>
#include <cstdlib>

namespace tonquay::engine {

using platform::AudioEngine;

namespace {

// The engine's attributes are set in pairs; these two values leave the one of the pair as it is.
constexpr float sameVolume = -1.0F;
constexpr float samePan = -101.0F;

}

std::wstring Seconds2HMS(std::int32_t seconds)
{
    return base::hoursMinutesSeconds(seconds);
}

std::int32_t shownVolume(std::int32_t sliderValue)
{
    return static_cast<std::int32_t>(std::abs(base::roundHalfEven(sliderValue / 10.0)));
}

Playback::Playback(EngineContext& context) : c_(context)
{
    c_.form.lstTracks.click = [this] { PlayTrack(c_.form.lstTracks.index()); };
    c_.form.SliderVolume.change = [this] {
        applyVolume(c_.form.SliderVolume.value());
        c_.form.lblVolume.caption = L"Volume : " + base::digits(shownVolume(c_.form.SliderVolume.value()));
    };
    c_.form.SliderBalance.change = [this] {
        applyBalance(c_.form.SliderBalance.value());
        c_.form.lblBalance.caption = base::digits(c_.form.SliderBalance.value());
    };
    c_.form.lblVolume.doubleClick = [this] {
        c_.engine.BASS_ChannelSetAttribute(c_.stream(), AudioEngine::BASS_ATTRIB_VOL, 0.0F);
    };
    c_.form.SliderPosition.click = [this] {
        seek(static_cast<double>(c_.form.SliderPosition.value()) / c_.form.SliderPosition.max());
    };
}

void Playback::PlayTrack(std::int32_t track)
{
    if (c_.extracting)
        return;
    c_.stir();
    c_.engine.BASS_ChannelStop(c_.stream());
    const AudioEngine::Handle stream =
        c_.engine.BASS_CD_StreamCreate(c_.engineDrive, track, AudioEngine::BASS_STREAM_AUTOFREE);
    c_.state.engine.audioStream = stream;
    if (stream != 0)
        applyVolume(c_.form.SliderVolume.value());
    // A stream begins in the middle.
    if (c_.form.SliderBalance.value() != 0)
        applyBalance(c_.form.SliderBalance.value());
    c_.engine.BASS_ChannelPlay(stream, true);
    installSyncs(track);
}

void Playback::installSyncs(std::int32_t track)
{
    const auto user = static_cast<std::uint32_t>(track);
    const auto next = [this](std::uint32_t ended) { PlayNextTrack(static_cast<std::int32_t>(ended)); };
    const auto failed = [this](std::uint32_t) { CDError(); };
    constexpr std::uint32_t once = AudioEngine::BASS_SYNC_ONETIME;
    c_.engine.BASS_ChannelSetSync(c_.stream(), AudioEngine::BASS_SYNC_END | once, 0, next, user);
    c_.engine.BASS_ChannelSetSync(c_.stream(), AudioEngine::BASS_SYNC_CD_ERROR | once, 0, failed, 0);
    c_.engine.BASS_ChannelSetSync(c_.stream(), AudioEngine::BASS_SYNC_SLIDE | once, 0, next, user);
}

void Playback::PlayNextTrack(std::int32_t track)
{
    if (c_.extracting)
        return;
    const std::int32_t next = track == c_.form.lstTracks.rowCount() - 1 ? 0 : track + 1;
    // Choosing the row starts the track already; the second start is harmless and covers a row that is not there.
    c_.form.lstTracks.setIndex(next);
    PlayTrack(next);
}

void Playback::CDError()
{
    if (c_.extracting)
        return;
    c_.engine.BASS_ChannelStop(c_.stream());
    c_.engine.BASS_StreamFree(c_.stream());
    c_.dialogs.messageBox(
        L"Error",
        L"There was an error playing back and Audio CD stream. Most probable cause is the CD drive was opened.",
        platform::Dialogs::Icon::stop);
    c_.form.lstTracks.clear();
    c_.form.SliderPosition.setValue(0);
}

void Playback::pauseOrResume()
{
    if (c_.extracting)
        return;
    c_.stir();
    if (c_.engine.BASS_ChannelIsActive(c_.stream()) == AudioEngine::paused)
        c_.engine.BASS_ChannelPlay(c_.stream(), false);
    else
        c_.engine.BASS_ChannelPause(c_.stream());
}

void Playback::stop()
{
    if (!c_.extracting)
        c_.engine.BASS_ChannelStop(c_.stream());
}

void Playback::openDoor(std::uint32_t drive)
{
    c_.stir();
    c_.engine.BASS_CD_Door(drive, AudioEngine::openDoor);
}

void Playback::applyVolume(std::int32_t sliderValue)
{
    if (c_.stream() == 0 || c_.extracting)
        return;
    c_.engine.BASS_ChannelSetAttribute(c_.stream(), AudioEngine::BASS_ATTRIB_VOL,
                                       static_cast<float>(std::abs(sliderValue)));
    c_.engine.BASS_ChannelSetAttribute(c_.stream(), AudioEngine::BASS_ATTRIB_PAN, samePan);
}

void Playback::applyBalance(std::int32_t sliderValue)
{
    if (c_.stream() == 0 || c_.extracting)
        return;
    c_.engine.BASS_ChannelSetAttribute(c_.stream(), AudioEngine::BASS_ATTRIB_VOL, sameVolume);
    c_.engine.BASS_ChannelSetAttribute(c_.stream(), AudioEngine::BASS_ATTRIB_PAN, static_cast<float>(sliderValue));
}

void Playback::seek(double fraction)
{
    if (c_.extracting)
        return;
    const auto length = static_cast<double>(c_.engine.BASS_ChannelGetLength(c_.stream(), 0));
    const auto position = static_cast<std::int64_t>(base::roundHalfEven(fraction * length));
    c_.engine.BASS_ChannelSetPosition(c_.stream(), position, 0);
}

}
