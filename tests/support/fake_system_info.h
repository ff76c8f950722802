#pragma once

#include "platform/system_info.h"

namespace tonquay::test {

/// Answers what its fields hold.
class FakeSystemInfo final : public platform::SystemInfo {
public:
    std::wstring installPath() override { return install; }
    std::wstring windowsFolder() override { return windows; }
    std::wstring systemFolder() override { return system; }
    std::wstring processorName() override { return processor; }
    Screen screen() override { return size; }

    std::wstring install = L"C:\\CDTONQUAY";
    std::wstring windows = L"C:\\WINDOWS";
    std::wstring system = L"C:\\WINDOWS\\SYSTEM";
    std::wstring processor = L"Fake Processor 1000";
    Screen size{1920 * 15, 1080 * 15, 15};
};

}
