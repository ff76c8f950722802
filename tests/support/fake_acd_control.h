#pragma once

#include "platform/acd_control.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tonquay::test {

/// A drive control that answers what its fields hold, records its calls ("SelectDrive(1)") and raises an event when
/// the test says so.
class FakeAcdControl final : public platform::AcdControl {
public:
    struct Drive {
        std::wstring name = L"D";
        std::vector<std::int32_t> trackMs; ///< lengths in milliseconds, the first track's at 0
    };

    void setEvents(Events events) override { events_ = std::move(events); }

    base::Result<std::int16_t> Probe() override;
    void SelectDrive(std::int16_t drive) override;
    std::int16_t RipTrack(std::int16_t track, std::wstring_view path) override;
    std::int16_t GetDriveCount() override;
    std::wstring GetDriveName(std::int16_t drive) override;
    std::int16_t GetTrackCount() override;
    void AbortRip() override { calls.emplace_back("AbortRip()"); }
    std::int16_t RipPartial(std::int16_t track, std::wstring_view path, std::int32_t startMs,
                            std::int32_t lengthMs) override;
    base::Result<std::int32_t> GetTrackLength(std::int16_t track) override;
    std::int16_t PlayTrack(std::int16_t track, std::int32_t start, std::int32_t end) override;
    void StopPlay() override { calls.emplace_back("StopPlay()"); }
    void PausePlay() override { calls.emplace_back("PausePlay()"); }
    void ResumePlay() override { calls.emplace_back("ResumePlay()"); }
    void Eject() override { calls.emplace_back("Eject()"); }
    void SetRipMode(std::int16_t mode) override;

    /// What the drive reports while it extracts. To be called inside a pass, e.g. from FakeEventLoop::after().
    void raiseProgress(std::int32_t tenthsOfPercent) const;
    void raiseDone() const;

    std::vector<Drive> drives{Drive{}};
    std::int16_t selected = 1;
    bool probeFails = false;
    std::int16_t probeAnswer = 0;
    std::int16_t ripAnswer = 0; ///< above 0: extraction fails
    std::int16_t playAnswer = 0;
    std::function<void(std::int16_t track, std::wstring_view path)> onRip; ///< e.g. to make the file
    std::vector<std::string> calls;

private:
    const Drive* current() const;

    Events events_;
};

}
