#pragma once

#include <string>

namespace tonquay::platform {

/// How an MP3 file's sound is measured.
enum class SoundReading {
    whole,   ///< every frame is counted, so it is known whether the sound is complete
    estimate ///< a few places are looked at; the sound then counts as complete
};

/// What a sound file says of itself, and what its sound is. A field that the file does not have is empty or 0.
struct FileTags {
    enum class Kind {
        none, ///< none of the others; `stream` is empty then
        mp3,  ///< MPEG audio, layer III
        oggVorbis,
        wav, ///< RIFF WAVE; its fields are always empty
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
