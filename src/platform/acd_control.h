#pragma once

#include "base/result.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tonquay::platform {

/// A drive control that extracts and plays on its own and tells of it by events. Tracks and drives count from 1; a
/// track's number is its place in the disc's table. The number in brackets is the call's dispatch number.
///
/// No drive is current before SelectDrive(); until then, and without an audio disc, there is nothing to extract, play,
/// measure or eject. All calls belong to the logic's thread, and none waits for a drive but Probe() and Eject().
class AcdControl {
public:
    struct Events {
        /// Again and again during an extraction, as far as there is news.
        std::function<void(std::int32_t tenthsOfPercent)> ripProgress;
        /// Once for each extraction, however it ended: complete, with an error, or by AbortRip().
        std::function<void()> ripDone;
    };

    /// The area of the line that says why an extraction was not started; it is left during the call that is refused.
    static constexpr std::string_view refusedArea = "extraction refused";

    virtual ~AcdControl() = default;

    /// Who hears of extractions. Events arrive on the logic's thread, inside a pass through the loop, and only for the
    /// extraction that was started last.
    virtual void setEvents(Events events) = 0;

    /// [2] A first access to the drive; fails when the drive cannot deliver audio. Without a disc there is nothing to
    /// fail at.
    virtual base::Result<std::int16_t> Probe() = 0;

    /// [4] Makes that drive current; a number that no drive has leaves none.
    virtual void SelectDrive(std::int16_t drive) = 0;

    /// [6] Starts to write the whole track as a WAV file and returns; RipDone tells the end. Above 0: nothing was
    /// started (no disc, no such audio track, the file cannot be opened, an extraction is under way), and no event
    /// comes.
    virtual std::int16_t RipTrack(std::int16_t track, std::wstring_view path) = 0;

    virtual std::int16_t GetDriveCount() = 0;                  ///< [8]
    virtual std::wstring GetDriveName(std::int16_t drive) = 0; ///< [9] the bare letter; empty for no drive

    /// [11] Tracks up to the last audio track of the current disc; 0 without a disc.
    virtual std::int16_t GetTrackCount() = 0;

    /// [14] Ends playback, if something was started to play, or else the running extraction, whose RipDone then comes.
    /// Nothing otherwise.
    virtual void AbortRip() = 0;

    /// [23] Like RipTrack() for the samples between two times of the track, each being sample 44.1 times its
    /// milliseconds, rounded down. What lies beyond the track's end is left out; above 0 also when nothing is left.
    virtual std::int16_t RipPartial(std::int16_t track, std::wstring_view path, std::int32_t startMs,
                                    std::int32_t lengthMs) = 0;

    /// [24] Milliseconds, rounded down. Fails when the current disc has no such audio track.
    virtual base::Result<std::int32_t> GetTrackLength(std::int16_t track) = 0;

    /// [27] Plays from `start` to `end`, both milliseconds of the track; an end of -1 is the end of the track. What
    /// played before is ended. Above 0: nothing plays.
    virtual std::int16_t PlayTrack(std::int16_t track, std::int32_t start, std::int32_t end) = 0;
    virtual void StopPlay() = 0;                    ///< [28]
    virtual void PausePlay() = 0;                   ///< [31]
    virtual void ResumePlay() = 0;                  ///< [32] after PausePlay(); nothing otherwise
    virtual void Eject() = 0;                       ///< [33] opens the current drive's tray
    virtual void SetRipMode(std::int16_t mode) = 0; ///< [34] 0, 1 or 2, for later extractions; it starts with 2
};

}
