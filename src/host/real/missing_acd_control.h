#pragma once

#include "platform/acd_control.h"

namespace tonquay::host {

/// The drive control of a system that has none: it cannot read a drive, knows no drive, and fails whatever it is told
/// to extract. Whoever probes it is led to the audio engine.
class MissingAcdControl final : public platform::AcdControl {
public:
    void setEvents(Events) override {}
    base::Result<std::int16_t> Probe() override
    {
        return base::Failure{base::Failure::Kind::unavailable, "drive control", "not there yet in this version"};
    }
    void SelectDrive(std::int16_t) override {}
    std::int16_t RipTrack(std::int16_t, std::wstring_view) override { return failed; }
    std::int16_t GetDriveCount() override { return 0; }
    std::wstring GetDriveName(std::int16_t) override { return {}; }
    std::int16_t GetTrackCount() override { return 0; }
    void AbortRip() override {}
    std::int16_t RipPartial(std::int16_t, std::wstring_view, std::int32_t, std::int32_t) override { return failed; }
    std::int32_t GetTrackLength(std::int16_t) override { return 0; }
    std::int16_t PlayTrack(std::int16_t, std::int32_t, std::int32_t) override { return failed; }
    void StopPlay() override {}
    void PausePlay() override {}
    void ResumePlay() override {}
    void Eject() override {}
    void SetRipMode(std::int16_t) override {}

private:
    static constexpr std::int16_t failed = 1;
};

}
