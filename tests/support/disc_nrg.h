#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Writes Nero images for makeDisc(). Tests that break an image on purpose use it too.
namespace tonquay::test {

/// Sectors between two tracks of a disc written track at once.
constexpr int nrgGapByTrack = 152;

struct NrgTrack {
    int number = 1;
    bool audio = true;
    int sectorBytes = 2352;
    int sector = 0; ///< of index 1
    int pregap = 0; ///< sectors in `stored` before index 1
    std::vector<std::byte> stored = {};
    std::string title = {};
};

struct NrgDisc {
    bool second = true; ///< NER5 with 64-bit offsets
    bool byTrack = false;
    std::vector<NrgTrack> tracks = {};
    std::string album = {};
    std::string artist = {};
    std::string genre = {};
};

std::vector<std::byte> nrgImage(const NrgDisc& disc);

/// CD-Text packs: titles (track 0 is the album), artist and genre.
std::vector<std::byte> cdTextPacks(const std::vector<std::string>& titles, const std::string& artist,
                                   const std::string& genre);

}
