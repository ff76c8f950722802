#pragma once

#include "base/result.h"
#include "console/options.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::console {

/// Reads the command line, without the program's name. Fails with one line for people when it makes no sense or asks
/// for something that this version does not have yet; nothing outside is looked at.
base::Result<Command> parseCommandLine(const std::vector<std::string>& arguments);

/// Why `format` cannot be had in this version, or an empty text. For the format of the saved settings, which the
/// command line does not show.
std::string whyNotAvailable(Format format);

/// As typed on the command line and shown: "mp3".
std::string_view formatName(Format format);

/// Whether `--bitrate` fits the format: one of the encoder's 14 rates, or a quality of 0 to 10 for Ogg.
bool bitrateFits(int bitrate, Format format);

/// The setting for a bitrate that fits: its place among the rates; an Ogg quality is that setting itself.
std::int16_t bitrateIndex(int bitrate, Format format);

}
