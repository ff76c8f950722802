#pragma once

#include "base/result.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tonquay::platform {

/// What is known of the names on a disc. An empty text is an unknown one.
struct DiscNames {
    std::wstring artist = {};
    std::wstring album = {};
    std::wstring year = {};
    std::wstring genre = {};
    std::wstring comment = {};
    std::vector<std::wstring> titles = {}; ///< by track, the first track's at 0; may be shorter than the disc
};

/// One track as the disc's table tells it. A sector is 1/75 second: 588 stereo frames, 2352 bytes (Red Book).
struct DiscTrack {
    int number = 0;      ///< as printed on the sleeve, 1 to 99
    int firstSector = 0; ///< of index 1, counted from the start of the program area
    int sectorCount = 0; ///< up to the next track's index 1, or to the lead-out
    bool audio = true;
};

struct DiscTable {
    std::vector<DiscTrack> tracks = {};
    DiscNames names = {};
    std::string discId = {}; ///< the 28-character identifier made from the table; the same for the same pressing
};

/// Why a drive gives no audio disc.
enum class DriveProblem { none, noDevice, noPermission, busy, trayOpen, noDisc, dataDisc, unreadable };

/// One drive, or one disc image, which counts as a drive whose door opens and closes.
struct DriveDescription {
    wchar_t letter = 0;
    std::string vendor = {};
    std::string product = {};
    std::string revision = {};
    std::string hostPath = {}; ///< device node or image file
    bool image = false;
    bool disc = false;           ///< an audio disc is in
    std::uint32_t abilities = 0; ///< the bits of AudioEngine::DriveInfo::rwflags
    bool canOpen = false;
    bool canLock = false;
    std::uint32_t maxSpeedKbps = 0; ///< 0 when the drive does not tell
    std::uint32_t cacheKb = 0;      ///< 0 when the drive does not tell
    DriveProblem problem = DriveProblem::none;
    std::string problemText = {}; ///< one sentence with its remedy, for people; empty without a problem
};

/// The drives of this machine and the discs in them, as far as more than playing is asked.
class Discs {
public:
    virtual ~Discs() = default;

    /// In order of their letters, from D on.
    virtual std::vector<DriveDescription> drives() = 0;

    /// The table and the names of the disc in a drive: CD-Text where the disc has it, else the image's sheet.
    virtual base::Result<DiscTable> read(wchar_t letter) = 0;
};

}
