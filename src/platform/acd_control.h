#pragma once

#include "base/result.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tonquay::platform {

/// A drive control that rips and plays on its own and tells of it by events. Tracks and drives count from 1.
/// The number in brackets is the call's dispatch number.
class AcdControl {
public:
    struct Events {
        std::function<void(std::int32_t tenthsOfPercent)> ripProgress;
        std::function<void()> ripDone;
    };

    virtual ~AcdControl() = default;

    /// Who hears of extractions. Events arrive on the logic's thread, inside a pass through the loop.
    virtual void setEvents(Events events) = 0;

    /// [2] A first access to the drive; fails when the drive cannot deliver audio.
    virtual base::Result<std::int16_t> Probe() = 0;
    virtual void SelectDrive(std::int16_t drive) = 0;                              ///< [4]
    virtual std::int16_t RipTrack(std::int16_t track, std::wstring_view path) = 0; ///< [6] above 0: failed
    virtual std::int16_t GetDriveCount() = 0;                                      ///< [8]
    virtual std::wstring GetDriveName(std::int16_t drive) = 0;                     ///< [9] the bare letter
    virtual std::int16_t GetTrackCount() = 0;                                      ///< [11]
    virtual void AbortRip() = 0;                                                   ///< [14]
    virtual std::int16_t RipPartial(std::int16_t track, std::wstring_view path, std::int32_t startMs,
                                    std::int32_t lengthMs) = 0;  ///< [23] above 0: failed
    virtual std::int32_t GetTrackLength(std::int16_t track) = 0; ///< [24] milliseconds
    virtual std::int16_t PlayTrack(std::int16_t track, std::int32_t start, std::int32_t end) = 0; ///< [27] end -1: all
    virtual void StopPlay() = 0;                                                                  ///< [28]
    virtual void PausePlay() = 0;                                                                 ///< [31]
    virtual void ResumePlay() = 0;                                                                ///< [32]
    virtual void Eject() = 0;                                                                     ///< [33]
    virtual void SetRipMode(std::int16_t mode) = 0;                                               ///< [34] 0, 1 or 2
};

}
