#pragma once

#include "host/mci/cd_player.h"
#include "host/mci/disc_times.h"
#include "host/mci/mci_device.h"

#include <functional>
#include <memory>
#include <optional>

namespace tonquay::host {

/// The device `cdaudio` over the disc that was in the drive when it was opened.
class CdAudio final : public MciDevice {
public:
    /// Opens the disc for a reader of its own; null when it is not in any more.
    using DiscOpener = std::function<std::shared_ptr<Disc>()>;

    CdAudio(std::vector<platform::DiscTrack> tracks, DiscOpener openDisc, CdPlayer& player);
    ~CdAudio() override { player_.stop(); }
    CdAudio(const CdAudio&) = delete;
    CdAudio& operator=(const CdAudio&) = delete;

    MciAnswer carryOut(const std::vector<std::wstring>& words) override;

private:
    MciAnswer status(const std::vector<std::wstring>& words);
    MciAnswer play(int firstSector);
    std::wstring timeText(std::int64_t ms) const;
    std::optional<std::int64_t> timeOf(std::wstring_view word) const;

    std::vector<platform::DiscTrack> tracks_;
    DiscTimes times_;
    DiscOpener openDisc_;
    CdPlayer& player_;
    bool hms_ = false;
};

}
