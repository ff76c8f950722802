#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "state/forms.h"
#include "state/settings.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// acdset.ini and riptype.ini: what the user chose, and which way of reading the disc is live.
namespace tonquay::state {

/// The settings in a text of acdset.ini. Every field starts at its default, `dataFolder` standing for the output
/// folder, and keeps it where the text is short or a value does not fit.
RipSettings parseRipSettings(std::wstring_view text, std::wstring_view dataFolder);

/// The settings in acdset.ini of a program folder that is not this program's, as far as they are there.
RipSettings savedRipSettings(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view programFolder,
                             std::wstring_view dataFolder);

/// The text of acdset.ini. An output folder that is a drive root of three characters is written as its first two.
std::string ripSettingsText(const RipSettings& settings);

/// Reads acdset.ini of the program folder into `settings`, or applies the defaults, then looks for an encoder when
/// none is named. Without the file the encoder is shown on the setup form, which is loaded by that.
void racdset(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders, Forms& forms,
             RipSettings& settings);

/// Writes acdset.ini in the program folder, which becomes the current folder.
void writeRipSettings(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                      const RipSettings& settings);

/// The number in riptype.ini of the program folder; 0 when it holds none, nothing without the file.
std::optional<std::int16_t> readRipType(platform::FileSystem& files, platform::Diagnostics& log,
                                        const Folders& folders);

/// Writes riptype.ini in the program folder.
void writeRipType(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                  std::int16_t ripEngineMode);

/// Switches to the audio engine for this run and the later ones.
void ForceAltRipMode(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders, RipPath& path,
                     RipSettings& settings);

}
