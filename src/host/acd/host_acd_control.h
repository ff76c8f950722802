#pragma once

#include "host/acd/extraction.h"
#include "host/acd/sector_reader.h"
#include "host/audio/thread_reaper.h"
#include "host/audio/track_player.h"
#include "host/drives/drive_set.h"
#include "platform/acd_control.h"
#include "platform/decode_report.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace tonquay::host {

/// The drive control of this system: the drives' discs read by mode, each extraction on threads of its own, and heard
/// through the sound device, since drives of today have no output of their own.
///
/// It may be destroyed at any time by the logic's thread: an extraction is broken off then, and nothing that was posted
/// does anything afterwards.
class HostAcdControl final : public platform::AcdControl {
public:
    using ReadEndCall = std::function<void(const platform::DecodeReport&)>;

    HostAcdControl(DriveSet& drives, platform::FileSystem& files, platform::EventLoop& loop,
                   platform::Diagnostics& log);
    ~HostAcdControl() override;
    HostAcdControl(const HostAcdControl&) = delete;
    HostAcdControl& operator=(const HostAcdControl&) = delete;

    /// `call` is made once for each extraction, before its RipDone.
    void onReadEnd(ReadEndCall call) { onReadEnd_ = std::move(call); }

    /// The current one, from 1; 0 for none.
    [[nodiscard]] std::int16_t selectedDrive() const { return drive_; }

    [[nodiscard]] const TrackPlayer& player() const { return player_; }

    void setEvents(Events events) override { events_ = std::move(events); }
    base::Result<std::int16_t> Probe() override;
    void SelectDrive(std::int16_t drive) override;
    std::int16_t RipTrack(std::int16_t track, std::wstring_view path) override;
    std::int16_t GetDriveCount() override;
    std::wstring GetDriveName(std::int16_t drive) override;
    std::int16_t GetTrackCount() override;
    void AbortRip() override;
    std::int16_t RipPartial(std::int16_t track, std::wstring_view path, std::int32_t startMs,
                            std::int32_t lengthMs) override;
    base::Result<std::int32_t> GetTrackLength(std::int16_t track) override;
    std::int16_t PlayTrack(std::int16_t track, std::int32_t start, std::int32_t end) override;
    void StopPlay() override;
    void PausePlay() override;
    void ResumePlay() override;
    void Eject() override;
    void SetRipMode(std::int16_t mode) override;

private:
    struct News;

    Drive* current();
    bool startExtraction(std::int16_t track, std::wstring_view path, std::int64_t firstSample, std::int64_t endSample);
    Extraction::Calls callsOfNextExtraction();
    void tellProgress(const std::shared_ptr<News>& news);
    void extractionEnded(std::uint64_t number, const platform::DecodeReport& report);
    std::string nameOf(std::int16_t drive, std::int16_t track);

    DriveSet& drives_;
    platform::FileSystem& files_;
    platform::EventLoop& loop_;
    platform::Diagnostics& log_;
    Events events_;
    ReadEndCall onReadEnd_;
    std::int16_t drive_ = 0; ///< the current one, from 1; 0 for none
    SectorReader::Mode mode_ = SectorReader::Mode::burst;
    std::uint64_t number_ = 0; ///< of the extraction that was started last
    ThreadReaper reaper_;
    TrackPlayer player_;
    std::shared_ptr<const bool> alive_; ///< what was posted holds it weakly
    std::unique_ptr<Extraction> extraction_;
    bool aborted_ = false; ///< the extraction that is there was told to end
};

}
