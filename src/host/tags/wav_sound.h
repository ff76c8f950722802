#pragma once

#include <cstdint>
#include <optional>

namespace tonquay::host {

/// The sound of a RIFF WAVE file.
struct WavSound {
    int sampleRateHz = 0;
    int channels = 0;
    std::uint32_t bytesPerSecond = 0; ///< above 0
    std::int64_t bytes = 0;           ///< of the sound that is there
    bool complete = true;             ///< false: the header claims more, or nothing yet
};

/// Walks the chunks of a file of `length` bytes to its sound. Nothing for what is no WAVE file, has no format in front
/// of its sound, or gives a byte rate of 0. Also reads RF64, the form for more than 4 GB. Reads a few bytes of each
/// chunk, of a thousand at most.
std::optional<WavSound> wavSound(int descriptor, std::int64_t length);

}
