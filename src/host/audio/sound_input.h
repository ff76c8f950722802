#pragma once

#include "host/audio/sound_system.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace tonquay::host {

/// The system's default capture device, from its opening on: 44.1 kHz, 16 bits, both sides, as on an audio disc. SDL
/// converts where the device has something else. A device that dies gives silence.
class SoundInput {
public:
    /// Whole frames, on a thread of the library's. It may neither wait nor allocate.
    using Heard = std::function<void(std::span<const std::byte> frames)>;

    /// Null when the system has no capture device, or a silent one; error() of the sound system says why, or nothing.
    static std::unique_ptr<SoundInput> open(Heard heard);

    /// Nothing is heard any more when this returns; a block that was not full is lost, 23 ms at most.
    ~SoundInput();
    SoundInput(const SoundInput&) = delete;
    SoundInput& operator=(const SoundInput&) = delete;

    /// False once the device went away.
    bool isAlive() const;

    std::string driver() const { return system_->driver(); }

    /// For open(), which looks whether there is a device then.
    SoundInput(std::shared_ptr<const SoundSystem> system, Heard heard);

private:
    static void callback(void* input, std::uint8_t* bytes, int length);

    std::shared_ptr<const SoundSystem> system_;
    Heard heard_;
    std::uint32_t device_ = 0; ///< 0: none
};

}
