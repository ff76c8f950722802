#pragma once

#include "platform/file_tags.h"

#include <chrono>
#include <string>

namespace tonquay::console {

/// What a WAV file must be that was decoded from an MP3 file.
struct DecodedExpectation {
    platform::FileTags::Stream stream{}; ///< of the MP3 file, by counting its frames
    int decoderExit = 0;
    /// fileTimeNow() (judged_file.h) of the folder, taken before the run.
    std::chrono::system_clock::time_point runBegan{};
};

struct DecodedVerdict {
    bool whole = false;
    double seconds = 0; ///< of the WAV file, as far as its header is one
    std::string text{}; ///< what is wrong, without the file's name; else empty
};

/// Looks at the finished WAV file and tells whether all of the MP3's sound is in it: the decoder ended with 0, the file
/// was written since the run began, has a canonical 44-byte header of 16-bit PCM with the MP3's sample rate and
/// channels whose sizes are those of the file, and the MP3 itself was not cut short.
///
/// A decoder leaves out what an encoder has put around the music: its own delay of 529 samples, and as many as the
/// information frame names, up to 4095 at each end. So the WAV may be that much shorter than the MP3's frames. It is
/// never longer than they are.
///
/// Reads 44 bytes. Never fails; a file that cannot be read is not whole.
DecodedVerdict judgeDecoded(const std::string& hostPath, const DecodedExpectation& expected);

}
