#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tonquay::platform {

/// The seconds of a track, counted from its start, that were not read at the first try. Each list is in order and holds
/// a second once; a second may be in several.
struct ReadTroubles {
    std::vector<std::int32_t> reread{};   ///< gave no data at first, and did at a later try
    std::vector<std::int32_t> repaired{}; ///< two readings differed, and the samples were put right
    std::vector<std::int32_t> givenUp{};  ///< no reading can be relied on: the file has silence or a guess there

    friend bool operator==(const ReadTroubles&, const ReadTroubles&) = default;
};

/// What came of one track that was read, told once when its stream or extraction ends.
struct DecodeReport {
    enum class End {
        complete,   ///< every byte that was asked for was delivered
        unreadable, ///< a sector gave no data
        gone,       ///< the disc was taken out, or the image's file went away
        stopped,    ///< stopped or freed before its end
        unwritten,  ///< the file could not be written
    };

    std::uint32_t drive = 0;        ///< as given to BASS_CD_StreamCreate, from 0
    std::int32_t track = 0;         ///< likewise
    std::int64_t bytesExpected = 0; ///< the whole track, or the part that was asked for
    std::int64_t bytesDelivered = 0;
    std::uint32_t crc32 = 0; ///< of the bytes delivered, as zip, gzip and PNG count it; 0 for no bytes
    End end = End::complete;
    std::int32_t firstBadSector = -1; ///< counted on the disc, where `end` is unreadable or gone; else -1
    std::string problem{};            ///< why, where `end` is unwritten
    ReadTroubles troubles{};          ///< of a way of reading that tries again; else empty
};

}
