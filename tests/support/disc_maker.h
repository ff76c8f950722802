#pragma once

#include "platform/discs.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Makes disc images for tests, and tells what must be read from them without asking the reader.
namespace tonquay::test {

/// A new folder that is deleted with everything in it.
class DiscFolder {
public:
    DiscFolder();
    ~DiscFolder();
    DiscFolder(const DiscFolder&) = delete;
    DiscFolder& operator=(const DiscFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

struct PlannedTrack {
    int sectors = 0; ///< from index 1 to the end of its own data
    bool audio = true;
    int pregap = 0;             ///< sectors of sound before index 1, in the data
    int silentPregap = 0;       ///< sectors of silence before that (PREGAP)
    int silentPostgap = 0;      ///< sectors of silence behind its data (POSTGAP)
    std::string title = {};     ///< UTF-8
    int dataSectorBytes = 2352; ///< as stored, of a data track: 2048, 2336 or 2352
};

enum class DiscFormat {
    cueBin,         ///< one BINARY file
    cueSwapped,     ///< one MOTOROLA file
    cueBinPerTrack, ///< a BINARY file for each track
    cueWave,        ///< WAVE, AIFF and FLAC need discs of audio tracks only
    cueWavePerTrack,
    cueAiff,
    cueFlac,
    cueFlacPerTrack,
    tocBin, ///< cdrdao, one file with the high byte first
    tocWavePerTrack,
    nrgFirst, ///< Nero, disc at once; silence is stored
    nrgSecond,
    nrgFirstByTrack, ///< Nero, track at once: no pregap is stored, so the tracks must have none
    nrgSecondByTrack,
};

struct DiscPlan {
    std::vector<PlannedTrack> tracks;
    DiscFormat format = DiscFormat::cueBin;
    int firstNumber = 1;
    std::string name = "album"; ///< of the files, without ending
    std::string artist = {};    ///< UTF-8, as the others
    std::string album = {};
    std::string genre = {};
    std::string year = {};
    std::string comment = {};
};

/// Writes the image; returns the file to open. Calls flac and sox for FLAC and AIFF. Fails the test that calls it when
/// something cannot be written.
std::filesystem::path makeDisc(const std::filesystem::path& folder, const DiscPlan& plan);

/// The table that the image must have.
std::vector<platform::DiscTrack> expectedTable(const DiscPlan& plan);

/// The bytes of one track, from its index 1 to that of the next one (or to its own end before a data track).
std::vector<std::byte> expectedSound(const DiscPlan& plan, std::size_t track);

/// 2352 bytes that differ from sector to sector, and when they are swapped or shifted. Sector -1 is silence.
std::vector<std::byte> patternSector(int number);

/// Writes a file; fails the test when it cannot.
void writeFile(const std::filesystem::path& path, const std::vector<std::byte>& bytes);
void writeFile(const std::filesystem::path& path, const std::string& text);
std::vector<std::byte> readFile(const std::filesystem::path& path);

/// A WAVE file of 44.1 kHz, 16 bit, stereo.
std::vector<std::byte> waveFile(const std::vector<std::byte>& sound);

}
