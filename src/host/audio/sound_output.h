#pragma once

#include "host/audio/voice.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"

#include <memory>
#include <mutex>
#include <vector>

namespace tonquay::host {

/// The sound device and the voices that are heard on it. Several voices sound together: their samples are added, and
/// what would be too loud for 16 bits is cut off there.
///
/// The device is opened by the first voice, never before, rests while there is none, and is closed after two seconds of
/// that, since an open device takes processor time. A machine without a device gets a silent one that runs at the right
/// speed, and a line says so. All calls belong to the logic's thread.
class SoundOutput {
public:
    SoundOutput(platform::EventLoop& loop, platform::Diagnostics& log);
    ~SoundOutput(); ///< like close()
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;

    /// Has a voice heard from the device's next block on. False when there is no device, not even a silent one.
    bool add(std::shared_ptr<Voice> voice);

    /// The voice is not touched any more when this returns; the block that sounds just now still does.
    void remove(const std::shared_ptr<Voice>& voice);

    /// Opens the device for a voice that is about to come, so that it is heard at once. False as for add().
    bool prepare();

    /// False also for a device that went away: voices go on as if it was there, and the next one opens it again.
    [[nodiscard]] bool isAlive() const;

    /// Nothing of the voices can be heard: the device is the silent one, or not open.
    [[nodiscard]] bool isSilent() const;

    /// Closes the device; takes about as long as two of its blocks, 50 ms. The next voice opens it again.
    void close();

    [[nodiscard]] bool isOpen() const { return device_ != nullptr; }

    /// To be held while a voice is looked at or changed. The callback waits for it, so hold it for moments only.
    [[nodiscard]] std::unique_lock<std::mutex> lock() { return std::unique_lock(mutex_); }

private:
    class Device;

    bool open();
    void closeSoon();
    void fill(std::span<std::int16_t> block);

    platform::EventLoop& loop_;
    platform::Diagnostics& log_;
    std::mutex mutex_;
    std::vector<std::shared_ptr<Voice>> voices_;
    std::unique_ptr<Device> device_;
    bool toldOfNoDevice_ = false;
    std::unique_ptr<platform::EventLoop::LoopTimer> restTimer_; ///< runs while nothing is heard
};

}
