#pragma once

#include <cstddef>
#include <cstdint>

namespace tonquay::host {

/// How blocks of sound lie in an ASF file, so that the file as a whole has the rate that was asked for. Every object
/// and every packet has a header of its own; with packets of a usual size and one block in each, a file of 320 kbit/s
/// would have 552.
struct AsfLayout {
    std::size_t blockBytes = 0;     ///< of each block; what the headers take is taken off here
    std::size_t blocksInObject = 1; ///< more than one at low rates only, whose blocks are small beside a header
    std::size_t packetBytes = 0;    ///< a whole number of objects fills it
};

/// For sound of 44100 Hz in blocks of `blockFrames` frames; `rate` in bits per second.
AsfLayout asfLayout(std::uint32_t rate, std::int32_t blockFrames);

}
