#pragma once

#include <cstdint>

namespace tonquay::platform {

/// What came of one decoded track, told once when its stream ends or is freed.
struct DecodeReport {
    enum class End {
        complete,   ///< every byte of the track was delivered
        unreadable, ///< a sector gave no data
        gone,       ///< the disc was taken out, or the image's file went away
        stopped,    ///< stopped or freed before its end
    };

    std::uint32_t drive = 0;        ///< as given to BASS_CD_StreamCreate, from 0
    std::int32_t track = 0;         ///< likewise
    std::int64_t bytesExpected = 0; ///< the whole track
    std::int64_t bytesDelivered = 0;
    std::uint32_t crc32 = 0; ///< of the bytes delivered, as zip, gzip and PNG count it; 0 for no bytes
    End end = End::complete;
    std::int32_t firstBadSector = -1; ///< counted on the disc, where `end` is unreadable or gone; else -1
};

}
