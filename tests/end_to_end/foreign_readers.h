#pragma once

#include <filesystem>
#include <map>
#include <string>

/// What programs that are not ours say of sound files.
namespace tonquay::test {

/// By name: "codec", "kbps", "seconds" and "channels", and in lower case each tag that ffprobe finds.
using SoundFacts = std::map<std::string, std::string>;
SoundFacts soundFacts(const std::filesystem::path& file);

/// The fields of a 128-byte block at the end of a file, as Python takes it apart: one byte a character (shown as
/// Latin-1, in UTF-8), up to the first NUL; numbers as text. Empty when the file ends in no such block.
struct Id3v1Facts {
    std::string title, artist, album, year, comment, track, genre;

    bool operator==(const Id3v1Facts&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Id3v1Facts& facts);

/// By path below the folder, for every MP3 file there.
std::map<std::string, Id3v1Facts> id3v1Facts(const std::filesystem::path& folder);

}
