#pragma once

#include "host/drives/drive_set.h"
#include "host/mci/cd_player.h"
#include "host/mci/mci_device.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/mci.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace tonquay::host {

/// The command interpreter over the discs of the drives and SDL's sound. Of each device type one is open at a time.
class HostMci final : public platform::Mci {
public:
    struct Settings {
        std::string folder = "/tmp"; ///< host path, where recordings lie until they are saved
        /// The drive that `cdaudio` takes, from 1; 0 for the first one with an audio disc.
        std::function<std::int16_t()> selectedDrive = {};
        std::chrono::milliseconds patience{30000}; ///< with a disc that is played and does not move
    };

    /// All outlive this.
    HostMci(DriveSet& drives, platform::FileSystem& files, platform::EventLoop& loop, platform::Diagnostics& log,
            Settings settings);
    ~HostMci() override;
    HostMci(const HostMci&) = delete;
    HostMci& operator=(const HostMci&) = delete;

    std::uint32_t mciSendString(std::wstring_view command, std::span<wchar_t> answer = {}) override;

private:
    enum class Type { cdaudio, waveaudio };
    struct Open {
        Type type = Type::cdaudio;
        std::unique_ptr<MciDevice> device{};
    };

    MciAnswer carryOut(std::wstring_view command);
    std::uint32_t open(Type type, const std::wstring& name);
    std::unique_ptr<MciDevice> openCd();
    std::unique_ptr<MciDevice> openRecorder();
    Drive* drive();

    DriveSet& drives_;
    platform::FileSystem& files_;
    platform::Diagnostics& log_;
    Settings settings_;
    CdPlayer player_;
    std::map<std::wstring, Open> devices_; ///< by their names in upper case; after what they use
};

}
