#include "engine/extraction_to_wma.h"

#include "base/red_book.h"
#include "base/text.h"
#include "engine/track_stream.h"

#include <algorithm>

namespace tonquay::engine {

using platform::WmaEncoder;

namespace {

WmaEncoder::Handle openEncoder(EngineContext& c, std::int32_t bitrate)
{
    return c.wma.BASS_WMA_EncodeOpenFile(base::red_book::samplesPerSecond, base::red_book::channels, 0,
                                         static_cast<std::uint32_t>(bitrate), wmaPath(c.state.run.ripTargetPath));
}

void writeTags(EngineContext& c, WmaEncoder::Handle encoder)
{
    const std::size_t count = std::min(c.form.txtWMATags.size(), c.wmaTagKeys.size());
    for (std::size_t i = 0; i < count && c.form.chkWMAFileTags.value() == 1; ++i) {
        const std::wstring& text = c.form.txtWMATags[i].text;
        if (!text.empty())
            c.wma.BASS_WMA_EncodeSetTag(encoder, c.wmaTagKeys[i], text, WmaEncoder::BASS_WMA_TAG_ANSI);
    }
    // Without a name: the tags are complete, also when there are none.
    c.wma.BASS_WMA_EncodeSetTag(encoder, L"", L"", WmaEncoder::BASS_WMA_TAG_ANSI);
}

void encodeStream(EngineContext& c, WmaEncoder::Handle encoder)
{
    const StreamEnd end =
        forEachBlock(c, [&](std::span<const std::byte> block) { return c.wma.BASS_WMA_EncodeWrite(encoder, block); });
    if (end == StreamEnd::noData) {
        // Leaves the encoder open; it is closed when it is freed.
        passOver(
            c.log,
            base::Status(base::Failure{base::Failure::Kind::unreadable, base::utf8(wmaPath(c.state.run.ripTargetPath)),
                                       "the disc gave no more data"}),
            extractionStep);
        return;
    }
    c.wma.BASS_WMA_EncodeClose(encoder);
}

}

std::wstring wmaPath(const std::wstring& wavPath)
{
    constexpr std::size_t endingLength = 3;
    return wavPath.substr(0, wavPath.size() - std::min(wavPath.size(), endingLength)) + L"WMA";
}

void ExtractAudioTrackToWMA(EngineContext& c, std::int32_t track, std::int32_t bitrate)
{
    if (!mayExtract(c, track))
        return;
    const std::uint32_t drive = c.engineDrive;
    WmaEncoder::Handle encoder = 0;
    if (openTrackStream(c, drive, track)) {
        c.form.form.enabled = false;
        encoder = openEncoder(c, bitrate);
        if (encoder == 0) {
            c.streamLeftOpen = c.stream();
            return;
        }
        const ExtractionInHand inHand(c);
        writeTags(c, encoder);
        encodeStream(c, encoder);
    }
    closeTrackStream(c, drive);
    if (encoder != 0) {
        c.wma.BASS_ChannelStop(encoder);
        c.wma.BASS_StreamFree(encoder);
    }
    showNoExtraction(c);
}

}
