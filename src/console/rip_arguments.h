#pragma once

#include "console/options.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

/// The options of `tonquay rip`, and the words and numbers of them that others show or check.
namespace tonquay::console {

inline constexpr const char* discHelp =
    "A drive (/dev/sr0), an image (.cue, .toc, .nrg) or a drive letter; without it the first drive with an audio disc";

/// Declares them; what is read goes to `rip`.
void declareRip(CLI::App& app, RipOptions& rip);

/// As typed on the command line and shown: "mp3".
std::string_view formatName(Format format);

/// Whether `--bitrate` fits the format: one of the encoder's 14 rates, or a quality of 0 to 10 for Ogg.
bool bitrateFits(int bitrate, Format format);

/// The setting for a bitrate that fits: its place among the rates; an Ogg quality is that setting itself.
std::int16_t bitrateIndex(int bitrate, Format format);

}
