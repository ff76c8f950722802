#pragma once

#include <string>

namespace tonquay::platform {

/// What a sound file says of itself, and what its sound is. A field that the file does not have is empty or 0.
struct FileTags {
    enum class Kind {
        none, ///< neither of the others; `stream` is empty then
        mp3,  ///< MPEG audio, layer III
        oggVorbis,
    };

    struct Stream {
        int bitrateKbps = 0; ///< the average of the whole sound
        int sampleRateHz = 0;
        int channels = 0;
        double seconds = 0;   ///< of the sound that is really there, to the millisecond
        bool complete = true; ///< false: the file ends before its sound does, so its writing was broken off
    };

    Kind kind = Kind::none;
    std::wstring title{};
    std::wstring artist{};
    std::wstring album{};
    std::wstring genre{};
    std::wstring comment{};
    int year = 0;
    int track = 0;
    Stream stream{};
};

}
