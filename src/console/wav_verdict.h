#pragma once

#include "base/wav_header.h"
#include "console/file_verdict.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tonquay::console {

/// What a track's WAV file must hold, and what its reader said of it.
struct WavExpectation {
    std::int64_t sampleBytes = 0; ///< by the disc's table: sectors * 2352
    std::int64_t bytesRead = 0;   ///< that the reader delivered while this file was written
};

/// What the WAV file of a track that was recorded as it was heard must be.
struct RecordingExpectation {
    std::int64_t sampleBytes = 0;                     ///< by the disc's table
    std::chrono::system_clock::time_point runBegan{}; ///< by the clock of the file's folder
};

/// How much longer or shorter than the track a recording may be: a sound card takes a moment to start, and so much of
/// the track's end is still on its way when the recording ends.
inline constexpr double recordingTolerance = 0.5;

/// Looks at the finished file and tells whether it is whole: a canonical 44-byte header (RIFF WAVE, PCM, 44100 Hz,
/// 16 bits, two channels) whose sizes are the track's, and as many sample bytes behind it. Any program plays a file
/// with a foreign tail right, so that counts as whole and is only remarked on.
///
/// Reads 44 bytes. Never fails; a file that cannot be read is not whole.
FileVerdict judgeWav(const std::filesystem::path& file, const WavExpectation& expected);

/// The same for a recording, whose samples cannot be those of the disc: the same header, sizes that are the file's own,
/// written in this run, and about as long as the track.
FileVerdict judgeRecording(const std::filesystem::path& file, const RecordingExpectation& expected);

/// A WAV file of that many sample bytes, header included.
constexpr std::int64_t wavFileBytes(std::int64_t sampleBytes)
{
    return sampleBytes + base::waveHeaderBytes;
}

}
