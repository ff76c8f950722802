#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tonquay::simulated {

/// What one simulated drive is and what ails it, as its file says. README.md lists the lines of the file.
struct Config {
    enum class Fault { none, missing, denied, busy };

    struct Track {
        bool audio = true;
        int firstSector = 0;
    };

    std::string device;
    std::string image;  ///< 2352 bytes a sector, from sector 0 on, data tracks and gaps included
    std::string cdText; ///< file with raw 18-byte packs
    std::string log;
    std::string vendor = "TONQUAY";
    std::string product = "SIMULATED DRIVE";
    std::string revision = "1.00";
    Fault fault = Fault::none;
    std::uint32_t group = 24;
    bool modePage = true; ///< the drive has the page that tells its abilities
    int firstNumber = 1;
    std::vector<Track> tracks;
    int leadOut = 0;
    int lastSession = 0; ///< first sector of the last session's first track; 0 for one session
    bool medium = true;
    bool doorOpen = false;
    bool ready = true;
    std::vector<int> bad;
    int jitterEvery = 0;   ///< one of so many reads, scattered, misses its place; 0: none
    int jitterSamples = 0; ///< by so many at most, to either side
    int removeAfter = -1;  ///< reads until the disc is torn out; -1: never
    int slowRead = 0;      ///< microseconds more for each read
    int slowCommand = 0;   ///< microseconds more for everything else
};

/// Lines that make no sense are told on standard error and passed over, so that a test with a typing error is found.
Config readConfig(const std::string& file);

}
