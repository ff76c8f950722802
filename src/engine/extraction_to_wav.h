#pragma once

#include "engine/engine_context.h"

#include <cstdint>

namespace tonquay::engine {

/// Reads a track (from 0) off the disc into the WAV file that ripTargetPath names, bit for bit.
///
/// Returns when the track is done, having passed through the event loop after every block of 20000 bytes; the door is
/// locked and the engine form disabled meanwhile. It returns nothing and shows nothing: success can only be seen in the
/// file. A track that cannot be opened makes no file. When reading or writing fails in the middle, the file keeps what
/// there was and both sizes in its header stay 0. An existing file is written over from its start and not cut off.
void ExtractAudioTrackToWav(EngineContext& context, std::int32_t track);

}
