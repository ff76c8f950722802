#pragma once

#include "engine/engine_context.h"

#include <cstdint>
#include <string_view>

namespace tonquay::engine {

/// How the diagnostic line of a failed extraction names its step; the cause follows behind ": ".
inline constexpr std::string_view extractionStep = "Extract a track";

/// Reads a track (from 0) off the disc into the WAV file that ripTargetPath names, bit for bit.
///
/// Returns when the track is done, having passed through the event loop after every block of 20000 bytes; the door is
/// locked and the engine form disabled meanwhile. It returns nothing and shows nothing: success can only be seen in the
/// file. A track that cannot be opened makes no file. When reading or writing fails in the middle, the file keeps what
/// there was and both sizes in its header stay 0. An existing file is written over from its start and not cut off.
void ExtractAudioTrackToWav(EngineContext& context, std::int32_t track);

/// Reads a track into a tagged WMA file. Not there yet: it leaves a line and makes no file.
void ExtractAudioTrackToWMA(EngineContext& context, std::int32_t track, std::int32_t bitrate);

}
