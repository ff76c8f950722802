#pragma once

#include <string>

namespace tonquay::platform {

/// What a WMA file says of itself, and what lies in it. A field that the file does not have is empty.
struct WmaFile {
    bool windowsMediaAudio = false; ///< an ASF file with one stream of Windows Media Audio 2; else nothing is told
    bool finished = false;          ///< its header tells a length; false: its writing was broken off
    double toldSeconds = 0;         ///< as the header has it, to the millisecond
    double heldSeconds = 0;         ///< of sound that a decoder gets whole, counted in the file's blocks of 2048 frames
    std::wstring title{};
    std::wstring artist{};
    std::wstring album{};
    std::wstring genre{};
    std::wstring comment{};
    std::wstring year{};
};

}
