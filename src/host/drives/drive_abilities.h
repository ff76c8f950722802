#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace tonquay::host {

/// What a drive can do, each bit as AudioEngine::DriveInfo::rwflags has it.
namespace ability {
constexpr std::uint32_t readsCdR = 0x1;
constexpr std::uint32_t readsCdRw = 0x2;
constexpr std::uint32_t readsMethod2 = 0x4;
constexpr std::uint32_t readsDvdRom = 0x8;
constexpr std::uint32_t readsDvdR = 0x10;
constexpr std::uint32_t readsDvdRam = 0x20;
constexpr std::uint32_t readsMode2Form1 = 0x100000;
constexpr std::uint32_t readsMode2Form2 = 0x200000;
constexpr std::uint32_t readsMultiSession = 0x400000;
constexpr std::uint32_t readsAudio = 0x1000000;
constexpr std::uint32_t streamIsAccurate = 0x2000000;
}

/// The page of capabilities and mechanical status (mode page 2A of MMC-3).
struct CapabilitiesPage {
    std::uint32_t abilities = 0;
    bool canLock = false;
    bool locked = false;
    bool canOpen = false;
    std::uint32_t maxReadSpeed = 0; ///< in 1000 bytes a second, as the page has it; 176 is play speed
    std::uint32_t bufferKb = 0;
};

/// Reads the page itself, from its code on. None when it is another page or shorter than what is read of it.
std::optional<CapabilitiesPage> parseCapabilitiesPage(std::span<const std::uint8_t> page);

}
