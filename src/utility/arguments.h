#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tonquay::utility {

/// What the utility was started with.
struct Arguments {
    enum class Wish { window, help, version };

    Wish wish = Wish::window;
    std::string file{};      ///< host path as it was given; empty for none
    bool handedOver = false; ///< by a sibling program, with "CDR" in front of the file
    std::string problem{};   ///< one sentence; empty when all is well
};

/// `words` are those behind the program's name: nothing, FILE, or CDR FILE. A file whose name begins with a hyphen
/// stands behind "--".
Arguments readArguments(std::span<const std::string_view> words);

/// What --help prints.
inline constexpr std::string_view usage =
    "tqutil [FILE]\n"
    "tqutil CDR FILE\n"
    "\n"
    "Shows the ID3v2 tag of an MP3 file in a window, changes it and removes it.\n"
    "Without FILE it asks for one. CDR is how a sibling program hands a file over:\n"
    "the command then ends at once, and the window stays.\n"
    "\n"
    "  -h, --help     prints this\n"
    "      --version  prints the version\n";

}
