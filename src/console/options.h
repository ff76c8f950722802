#pragma once

#include "console/tag_changes.h"
#include "console/track_list.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tonquay::console {

enum class Format { mp3, ogg, wav, wma };
enum class Names { name, number, artist, album, artistAlbum, artistName, numberName }; ///< in the order of nameFormat
enum class Folders { none, artist, album };                                            ///< in the order of dirMode
enum class Schedule { batch, single, turbo };
enum class Method { normal, synchronous, burst, analog, digital2 }; ///< in the order of ripMethod

/// Whether an encoder program makes the files, out of WAV files.
constexpr bool usesEncoder(Format format)
{
    return format == Format::mp3 || format == Format::ogg;
}

/// Names that the user gives in place of the disc's.
struct GivenNames {
    std::optional<std::wstring> artist{};
    std::optional<std::wstring> album{};
    std::optional<std::wstring> year{};
    std::optional<std::wstring> genre{};
    std::optional<std::wstring> comment{};
    std::map<int, std::wstring> titles{}; ///< by the number printed on the sleeve
};

/// `tonquay rip`. What is not set comes from the user's saved settings.
struct RipOptions {
    std::string disc{};                  ///< as typed; empty: the first drive with an audio disc
    std::optional<std::string> output{}; ///< a host path
    std::optional<TrackList> tracks{};   ///< all audio tracks without
    std::optional<Format> format{};
    std::optional<Names> names{};
    std::optional<Folders> folders{};
    std::optional<Schedule> schedule{};
    std::optional<int> bitrate{};    ///< one of the 14 rates in kbps, or an Ogg quality 0 to 10
    std::optional<int> vbrQuality{}; ///< 0 to 9
    bool mono = false;
    bool crc = false;
    bool keepWav = false;
    std::optional<std::string> encoder{}; ///< a host path or a bare name
    std::optional<std::string> encoderOptions{};
    Method method = Method::digital2;
    std::optional<int> fromSeconds{};
    std::optional<int> toSeconds{};
    GivenNames given{};
    bool program = false;
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

struct ListOptions {
    std::string disc{};
    bool json = false;
};

struct DrivesOptions {
    bool json = false;
};

struct ToWavOptions {
    std::vector<std::string> files{}; ///< host paths as typed; one at least
};

struct TagsOptions {
    std::vector<std::string> files{}; ///< host paths as typed; one at least
    TagChanges changes{};             ///< none: the files are only read
    bool json = false;
};

/// A text that answers the command line by itself: help or version.
struct Answer {
    std::string text{};
};

using Command = std::variant<RipOptions, ListOptions, DrivesOptions, TagsOptions, ToWavOptions, Answer>;

}
