#include "engine/extraction_to_wav.h"

#include "base/text.h"
#include "engine/error_reporters.h"
#include "platform/wav_file.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace tonquay::engine {

using platform::AudioEngine;

namespace {

constexpr std::size_t blockBytes = 20000;

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

/// Copies the stream into the file to its end. `bytesWritten` follows the stream's position.
base::Status copyStream(EngineContext& c, platform::WavFile& file, std::int64_t& bytesWritten)
{
    std::vector<std::byte> extractBuffer(blockBytes);
    while (c.engine.BASS_ChannelIsActive(c.stream()) != AudioEngine::stopped) {
        const std::int32_t n = c.engine.BASS_ChannelGetData(c.stream(), extractBuffer);
        if (n <= 0)
            return base::Failure{base::Failure::Kind::unreadable, base::utf8(c.state.run.ripTargetPath),
                                 "the disc gave no more data"};
        const auto block = std::span(extractBuffer).first(static_cast<std::size_t>(n));
        if (auto written = file.write(block); !written)
            return written;
        bytesWritten = c.engine.BASS_ChannelGetPosition(c.stream(), 0);
        c.loop.pass();
    }
    return {};
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
        return base::Failure{base::Failure::Kind::other, base::utf8(c.state.run.ripTargetPath),
                             "the track was ended before its last byte"};
    c.engine.BASS_ChannelStop(c.stream());
    c.engine.BASS_StreamFree(c.stream());
    return file.finish(bytesWritten);
}

}

void ExtractAudioTrackToWav(EngineContext& c, std::int32_t track)
{
    if (c.extracting) {
        ReportEngineError(c.log, L"Another extraction is in hand; left out: track", track + 1);
        return;
    }
    const std::uint32_t drive = c.engineDrive;
    c.stir();
    c.dialogs.setPointer(platform::Dialogs::Pointer::busy);
    c.engine.BASS_CD_Door(drive, AudioEngine::lockDoor);
    c.state.engine.audioStream = c.engine.BASS_CD_StreamCreate(drive, track, AudioEngine::BASS_STREAM_DECODE);
    if (c.stream() != 0) {
        c.form.form.enabled = false;
        c.extracting = true;
        passOver(c.log, writeTrack(c), extractionStep);
        c.extracting = false;
    } else {
        ReportEngineError(c.log, L"No stream for track", track + 1);
    }
    c.engine.BASS_CD_Door(drive, AudioEngine::unlockDoor);
    if (c.stream() != 0) {
        c.engine.BASS_ChannelStop(c.stream());
        c.engine.BASS_StreamFree(c.stream());
    }
    c.dialogs.setPointer(platform::Dialogs::Pointer::normal);
    c.form.form.enabled = true;
}

void ExtractAudioTrackToWMA(EngineContext& c, std::int32_t, std::int32_t)
{
    c.log.line("engine", "WMA files cannot be made yet; the track is left out");
}

}
