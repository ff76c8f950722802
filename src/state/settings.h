#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tonquay::state {

/// Where things lie. All in the program's form, without a trailing backslash.
struct Folders {
    std::wstring appFolder;     ///< the program folder; every relative file lives here
    std::wstring windowsFolder; ///< upper case
    std::wstring systemFolder;  ///< upper case
    std::wstring dataFolder;    ///< default folder for data
};

/// How a disc is read: RipSettings::ripMethod.
enum RipMethod : std::int16_t {
    normalMethod = 0,      ///< the drive control, with overlapping and repeated readings
    synchronousMethod = 1, ///< the drive control, with overlapping readings
    burstMethod = 2,       ///< the drive control, each sector once
    analogMethod = 3,      ///< what a drive plays is recorded
    engineMethod = 4,      ///< the audio engine
};

/// The 22 fields of acdset.ini, in their order, each at the value that it has without the file.
struct RipSettings {
    std::wstring driveLetter;  ///< one letter as the drive layer reports it
    std::wstring outputFolder; ///< dataFolder without the file
    std::int16_t createProgram = 1;
    std::int16_t nameFormat = 0; ///< 0 to 6, see naming/file_name.h
    std::wstring encoderPath;
    std::int16_t encodeWanted = 1;
    std::int16_t deleteWav = 1;
    std::int16_t crcCheck = 0;
    std::int16_t highPriority = 0;
    std::int16_t stereo = 1;
    std::int16_t bitrateIndex = 8; ///< into the 14 rates from 32 to 320 kbps; 8 is 128
    std::wstring encoderCmdLine;   ///< the user's own switches; empty: the built ones
    std::wstring encoderFileExt;
    std::int16_t ripMethod = engineMethod;
    std::int16_t dirMode = 2;      ///< folders: 0 none, 1 artist, 2 artist and album
    std::int16_t encodeSingle = 0; ///< 0 batch, 1 each track at once
    std::int16_t vbrQuality = 0;   ///< 0 best to 9
    std::int16_t minimizeWhileEncoding = 1;
    std::int16_t ripToWma = 0;
    std::int16_t turboMode = 0;
    std::int16_t autoSelectAll = 1;
    std::int16_t autoClose = 0;
};

/// Which of the ways to read a disc is live. A change of it restarts the program.
struct RipPath {
    std::int16_t ripEngineMode = 0; ///< 1: the drive control; 0: the audio engine
};

/// The suite's colours: the theme of TQWIN4.INI, else what stands in the design.
struct Theme {
    std::int16_t useThemeColours = 0;
    std::int32_t themeColourA = 0; ///< 0x00BBGGRR
    std::int32_t themeColourB = 0;
    std::array<std::int32_t, 13> panelColours{};

    std::int32_t highlight() const { return useThemeColours == 1 ? themeColourA : 0x00FFFF; }
    std::int32_t normal() const { return useThemeColours == 1 ? themeColourB : 0x004040; }
};

}
