#include "engine/extraction_to_wav.h"

#include "base/text.h"
#include "engine/track_stream.h"
#include "platform/wav_file.h"

#include <algorithm>
#include <utility>

namespace tonquay::engine {

using platform::AudioEngine;

namespace {

base::WaveFormat streamFormat(EngineContext& c)
{
    AudioEngine::ChannelInfo info;
    c.engine.BASS_ChannelGetInfo(c.stream(), info);
    float frequency = 0;
    c.engine.BASS_ChannelGetAttribute(c.stream(), AudioEngine::BASS_ATTRIB_FREQ, frequency);
    base::WaveFormat format;
    format.channels = static_cast<std::uint16_t>(std::min<std::uint32_t>(info.chans, 2));
    format.samplesPerSecond = static_cast<std::uint32_t>(frequency);
    format.bitsPerSample = (info.flags & AudioEngine::BASS_SAMPLE_8BITS) != 0 ? 8 : 16;
    return format;
}

base::Failure failure(EngineContext& c, base::Failure::Kind kind, const char* text)
{
    return {kind, base::utf8(c.state.run.ripTargetPath), text};
}

/// Copies the stream into the file to its end. `bytesWritten` follows the stream's position.
base::Status copyStream(EngineContext& c, platform::WavFile& file, std::int64_t& bytesWritten)
{
    base::Status written;
    const StreamEnd end = forEachBlock(c, [&](std::span<const std::byte> block) {
        written = file.write(block);
        if (written)
            bytesWritten = c.engine.BASS_ChannelGetPosition(c.stream(), 0);
        return static_cast<bool>(written);
    });
    if (end == StreamEnd::noData)
        return failure(c, base::Failure::Kind::unreadable, "the disc gave no more data");
    return written;
}

base::Status writeTrack(EngineContext& c)
{
    auto opened = c.files.openBinary(c.state.run.ripTargetPath);
    if (!opened)
        return opened.failure();
    platform::WavFile file(std::move(*opened));
    if (auto written = file.writeHeader(streamFormat(c)); !written)
        return written;
    const std::int64_t length = c.engine.BASS_ChannelGetLength(c.stream(), 0);
    std::int64_t bytesWritten = 0;
    if (auto copied = copyStream(c, file, bytesWritten); !copied)
        return copied;
    if (bytesWritten != length)
        return failure(c, base::Failure::Kind::other, "the track was ended before its last byte");
    c.engine.BASS_ChannelStop(c.stream());
    c.engine.BASS_StreamFree(c.stream());
    return file.finish(bytesWritten);
}

}

void ExtractAudioTrackToWav(EngineContext& c, std::int32_t track)
{
    if (!mayExtract(c, track))
        return;
    const std::uint32_t drive = c.engineDrive;
    if (openTrackStream(c, drive, track)) {
        c.form.form.enabled = false;
        const ExtractionInHand inHand(c);
        passOver(c.log, writeTrack(c), extractionStep);
    }
    closeTrackStream(c, drive);
    showNoExtraction(c);
}

}
