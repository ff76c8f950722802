#pragma once

#include "engine/engine_context.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

/// What the ways of extraction share: the stream of a track, from its opening to the engine form as it was.
namespace tonquay::engine {

/// How the diagnostic line of a failed extraction names its step; the cause follows behind ": ".
inline constexpr std::string_view extractionStep = "Extract a track";

/// Shows the busy pointer, locks the door of `drive` and makes the process's stream one of `track` (from 0). False,
/// with a line, when there is no such audio track.
bool openTrackStream(EngineContext& context, std::uint32_t drive, std::int32_t track);

enum class StreamEnd {
    over,     ///< it became inactive
    noData,   ///< a read gave nothing
    notTaken, ///< `take` refused a block
};

/// Hands the stream on in blocks of 20000 bytes, the last one shorter, and passes through the event loop after each.
StreamEnd forEachBlock(EngineContext& context, const std::function<bool(std::span<const std::byte>)>& take);

/// Unlocks the door and frees the stream.
void closeTrackStream(EngineContext& context, std::uint32_t drive);

/// The engine form and the pointer as they are without an extraction.
void showNoExtraction(EngineContext& context);

/// While it lives the stream is the extraction's, and nobody else's.
class ExtractionInHand {
public:
    explicit ExtractionInHand(EngineContext& context) : context_(context) { context_.extracting = true; }
    ~ExtractionInHand() { context_.extracting = false; }
    ExtractionInHand(const ExtractionInHand&) = delete;
    ExtractionInHand& operator=(const ExtractionInHand&) = delete;

private:
    EngineContext& context_;
};

/// False, with a line that the track is left out, while another extraction is in hand.
bool mayExtract(EngineContext& context, std::int32_t track);

}
