#include "engine/track_stream.h"

#include "engine/error_reporters.h"

#include <utility>
#include <vector>

namespace tonquay::engine {

using platform::AudioEngine;

bool mayExtract(EngineContext& c, std::int32_t track)
{
    if (c.extracting)
        ReportEngineError(c.log, L"Another extraction is in hand; left out: track", track + 1);
    return !c.extracting;
}

bool openTrackStream(EngineContext& c, std::uint32_t drive, std::int32_t track)
{
    c.stir();
    c.dialogs.setPointer(platform::Dialogs::Pointer::busy);
    c.engine.BASS_CD_Door(drive, AudioEngine::lockDoor);
    // It would go on reading ahead for nobody.
    if (const AudioEngine::Handle left = std::exchange(c.streamLeftOpen, 0); left != 0)
        c.engine.BASS_StreamFree(left);
    c.state.engine.audioStream = c.engine.BASS_CD_StreamCreate(drive, track, AudioEngine::BASS_STREAM_DECODE);
    if (c.stream() == 0)
        ReportEngineError(c.log, L"No stream for track", track + 1);
    return c.stream() != 0;
}

StreamEnd forEachBlock(EngineContext& c, const std::function<bool(std::span<const std::byte>)>& take)
{
    constexpr std::size_t blockBytes = 20000;
    std::vector<std::byte> extractBuffer(blockBytes);
    while (c.engine.BASS_ChannelIsActive(c.stream()) != AudioEngine::stopped) {
        const std::int32_t n = c.engine.BASS_ChannelGetData(c.stream(), extractBuffer);
        if (n <= 0)
            return StreamEnd::noData;
        if (!take(std::span(extractBuffer).first(static_cast<std::size_t>(n))))
            return StreamEnd::notTaken;
        c.loop.pass();
    }
    return StreamEnd::over;
}

void closeTrackStream(EngineContext& c, std::uint32_t drive)
{
    c.engine.BASS_CD_Door(drive, AudioEngine::unlockDoor);
    if (c.stream() != 0) {
        c.engine.BASS_ChannelStop(c.stream());
        c.engine.BASS_StreamFree(c.stream());
    }
}

void showNoExtraction(EngineContext& c)
{
    c.dialogs.setPointer(platform::Dialogs::Pointer::normal);
    c.form.form.enabled = true;
}

}
