#pragma once

#include "host/audio/sound_input.h"
#include "host/mci/cd_player.h"
#include "host/mci/mci_device.h"
#include "host/mci/recording.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <memory>
#include <string>

namespace tonquay::host {

/// The device `waveaudio`, which records from the capture device or listens in on the player.
class WaveAudio final : public MciDevice {
public:
    struct Surroundings {
        CdPlayer& player;
        platform::FileSystem& files;
        platform::Diagnostics& log;
        std::string folder; ///< host path, for recordings
    };

    explicit WaveAudio(Surroundings surroundings) : s_(std::move(surroundings)) {}
    ~WaveAudio() override { stop(); }
    WaveAudio(const WaveAudio&) = delete;
    WaveAudio& operator=(const WaveAudio&) = delete;

    MciAnswer carryOut(const std::vector<std::wstring>& words) override;

private:
    static MciAnswer set(const std::vector<std::wstring>& words);
    MciAnswer record();
    void stop();
    MciAnswer save(std::wstring_view path);

    Surroundings s_;
    std::unique_ptr<Recording> recording_;
    std::unique_ptr<SoundInput> input_; ///< after the recording, which it puts into
};

}
