#pragma once

#include <cstdint>
#include <string>

namespace tonquay::state {

/// What the automatic tagger is opened for. Whoever shows it says so before.
enum AutoTagMode : std::int16_t {
    enterDiscTags = 0, ///< the values are kept as the disc's own; no file is touched
    tagDisc = 1,       ///< the user has the files of all tracks tagged
    tagRun = 2,        ///< a run has the files of its tracks tagged, unseen, while the form loads
};

/// What is going on. 1 is yes. Handlers that run in the middle of a run look here before they act.
struct RunFlags {
    std::int16_t ripBusy = 0;       ///< from the start of a run to its very end
    std::int16_t encodeBusy = 0;    ///< from an encoder's start to the end of one that is waited for
    std::int16_t stopRequested = 0; ///< Stop was given during a run; taken by the run
    std::int16_t encodeOnly = 0;    ///< the run extracts nothing
    std::int16_t analogBusy = 0;    ///< one analog capture runs
    bool acdTrackDone = false;      ///< the drive control's extraction has ended
    std::int16_t previewActive = 0; ///< a track preview plays
    std::int16_t autoTagBusy = 0;   ///< the tagger writes tags, or tells how many
    std::int16_t autoTagMode = 0;   ///< an AutoTagMode
};

/// What a run hands to the ways of extraction, and what they show progress by.
struct RunInHand {
    std::int32_t selectedCount = 0;    ///< tracks selected when the run started
    std::int32_t lastSelected = 0;     ///< under Turbo the row of the last selected track, else 0
    std::int32_t rippedCount = 0;      ///< ordinal of the track in hand, from 1
    std::int16_t ripProgressTotal = 0; ///< copies of the two above, set before an extraction
    std::int16_t ripProgressNumber = 0;
    std::wstring ripTargetPath;  ///< the WAV file of the track in hand
    std::wstring currentName;    ///< its file name without the ending
    std::wstring destFolder;     ///< the folder of the output files
    std::wstring analogTempPath; ///< free of blanks
    std::int16_t analogTrack = 0;
    std::int32_t wmaBitrate = 0; ///< bits per second
};

/// The engine stream of the process and the drive it reads from.
struct EngineState {
    std::uint32_t audioStream = 0;       ///< 0 until the first one; stale once it ended
    std::int32_t selectedDriveIndex = 0; ///< of driveLetter in cmbCDDrives
    std::wstring pendingDriveLetter;     ///< the drive that select_drive is to switch to
    std::int16_t acdResult = 0;          ///< last whole-number result of a drive control call
};

/// Fields of the main window that are no controls.
struct WindowState {
    std::wstring mixerPath;
    std::int16_t discWasRemoved = 0;
    std::int32_t savedLeft = 0; ///< twips
    std::int32_t savedTop = 0;
    std::int16_t keepWindowPlace = 0; ///< 1: the stored place is not applied
    std::int16_t keypadStyle = 0;
    std::int16_t smallFonts = 0;
};

}
