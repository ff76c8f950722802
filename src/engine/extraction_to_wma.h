#pragma once

#include "engine/engine_context.h"

#include <cstdint>
#include <string>

namespace tonquay::engine {

/// The file that a track becomes: the WAV file's path, its last three characters replaced by "WMA".
std::wstring wmaPath(const std::wstring& wavPath);

/// Reads a track (from 0) off the disc and encodes it, at `bitrate` bits per second, into a Windows Media file: the
/// wmaPath() of ripTargetPath. With chkWMAFileTags ticked the texts of txtWMATags go along as its tags.
///
/// Returns when the track is done, having passed through the event loop after every block of 20000 bytes; the door is
/// locked and the engine form disabled meanwhile. It returns nothing and shows nothing. A track that cannot be opened
/// makes no file. When reading or writing fails in the middle, the file has what there was until then.
///
/// When the encoder cannot be opened (it offers no such rate, or the file cannot be made) the door stays locked, the
/// form disabled, the stream open and the pointer busy; the next extraction puts that right, and so does the end of
/// the program.
void ExtractAudioTrackToWMA(EngineContext& context, std::int32_t track, std::int32_t bitrate);

}
