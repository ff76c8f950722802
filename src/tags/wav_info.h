#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::tags {

/// What is shown of a WAV file. It is kept from file to file: what a file does not give stays as the file before gave
/// it.
struct WavInfo {
    std::int16_t WavChannels = 0;
    std::int16_t WavBits = 0;    ///< of one sample of one channel
    std::wstring WavSampleRate;  ///< Hz
    std::int32_t WavBitRate = 0; ///< bits per second
    std::wstring WavFileSize;    ///< bytes
    std::wstring WavPlayTime;    ///< minutes and seconds, each of at least two digits: "03:25", "123:00"
};

/// Looks at a few places of a RIFF WAVE header, where its canonical form of 44 bytes has them; chunks are not walked.
/// True when the file begins with "RIFF". Otherwise only the size, the channels and the bits are taken.
///
/// The rate is told from the lowest byte of its field alone. Those of 8000, 11025, 22050, 32000, 44100 and 48000 Hz are
/// known; 96000 Hz has the one of 32000 and counts as that, and any other leaves the rate. A bit rate that its field
/// cannot hold leaves it. The play time takes 1000 bytes for the header, and is 0 when the bit rate is.
///
/// Each place that lies behind the end of the file, or in a file that cannot be read (that leaves a line), leaves its
/// field. The size of a missing file is 0. The file is only read.
bool ReadWavInfo(platform::FileSystem& files, platform::Diagnostics& log, WavInfo& info, std::wstring_view path);

/// Six lines for the user, each ended by CR LF: bit rate, sample size, channels, sample rate, file size, play time.
std::wstring wavInformation(const WavInfo& info);

}
