#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "state/run_flags.h"
#include "state/settings.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// The settings files that the other programs of the suite write and this one reads, and the one of the window's
/// place, all in the program folder. A missing or short file leaves the values.
namespace tonquay::state {

/// The 16th field of tqwin.ini: the folder for data. `appFolder`\datacd when it names none.
std::wstring readDataFolder(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders);

/// Writes tqwin.ini with the folder for data, its other fields empty: for whoever prepares a program folder.
void writeDataFolder(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                     std::wstring_view dataFolder);

/// The first field of TQWIN1.INI: the audio mixer program; the system's own when it is empty.
void readMixerPath(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                   std::wstring& mixerPath);

/// Writes TQWIN1.INI with that program, its other fields empty: for whoever prepares a program folder.
void writeMixerPath(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                    std::wstring_view mixerPath);

/// How one part of the display is written.
struct DisplayFont {
    std::wstring name; ///< empty: the design's own
    std::int32_t size = 0;
    std::array<std::int16_t, 3> style{};
    std::int32_t colour = 0;
};

/// TQWIN3.INI: three fonts and the panel colours.
struct DisplayFonts {
    DisplayFont disc; ///< artist, album and title
    DisplayFont status;
    DisplayFont track; ///< the track number
};

void readDisplayFonts(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                      DisplayFonts& fonts, Theme& theme);

/// TQWIN4.INI: the colour theme. `plainTrackFont` is set when the theme wants the track number in a plain font.
void readTheme(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders, Theme& theme,
               bool& plainTrackFont);

/// TQWIN7.INI: whether the stored place is left alone, and the look of the keypad.
void readWindowChoices(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                       WindowState& window);

/// RIPPOS.DAT: the window's place in twips. False when there is no such file.
bool readWindowPlace(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                     WindowState& window);
void writeWindowPlace(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                      const WindowState& window);

}
