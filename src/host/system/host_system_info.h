#pragma once

#include "host/system/end_actions.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "platform/system_info.h"

#include <string>

namespace tonquay::host {

class HostSystemInfo final : public platform::SystemInfo {
public:
    struct Settings {
        std::string tempFolder = "/tmp"; ///< where the private folder is made; without blanks, reached by C:
        std::string processorFile = "/proc/cpuinfo";
        std::int32_t screenWidth = 1920; ///< logical pixels
        std::int32_t screenHeight = 1080;
    };

    /// Makes the private folder of this process, which is removed with all that is in it when this is destroyed or the
    /// program ended. What is given outlives this.
    HostSystemInfo(platform::FileSystem& files, platform::Diagnostics& log, EndActions& endActions,
                   const Settings& settings);
    ~HostSystemInfo() override;
    HostSystemInfo(const HostSystemInfo&) = delete;
    HostSystemInfo& operator=(const HostSystemInfo&) = delete;

    std::wstring installPath() override;
    std::wstring windowsFolder() override { return windows_; }
    std::wstring systemFolder() override { return windows_ + L"\\system"; }
    std::wstring processorName() override;
    Screen screen() override { return screen_; }

private:
    platform::FileSystem& files_;
    std::string folder_;
    std::string processorFile_;
    std::wstring windows_;
    Screen screen_;
};

}
