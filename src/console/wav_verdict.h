#pragma once

#include "base/wav_header.h"
#include "console/file_verdict.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace tonquay::console {

/// What a track's WAV file must hold, and what its reader said of it.
struct WavExpectation {
    std::int64_t sampleBytes = 0; ///< by the disc's table: sectors * 2352
    std::int64_t bytesRead = 0;   ///< that the reader delivered while this file was written
};

/// Looks at the finished file and tells whether it is whole: a canonical 44-byte header (RIFF WAVE, PCM, 44100 Hz,
/// 16 bits, two channels) whose sizes are the track's, and as many sample bytes behind it. Any program plays a file
/// with a foreign tail right, so that counts as whole and is only remarked on.
///
/// Reads 44 bytes. Never fails; a file that cannot be read is not whole.
FileVerdict judgeWav(const std::filesystem::path& file, const WavExpectation& expected);

/// A WAV file of that many sample bytes, header included.
constexpr std::int64_t wavFileBytes(std::int64_t sampleBytes)
{
    return sampleBytes + base::waveHeaderBytes;
}

}
