#include "host/audio/sound_output.h"

#include "host/audio/sdl_library.h"
#include "host/audio/sound_system.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tonquay::host {

namespace {

constexpr int blockFrames = 1024;

}

class SoundOutput::Device {
public:
    /// Without a system it is no device.
    Device(std::shared_ptr<const SoundSystem> system, SoundOutput& output) : system_(std::move(system))
    {
        if (!system_)
            return;
        SDL_AudioSpec wanted{};
        wanted.freq = framesPerSecond;
        wanted.format = AUDIO_S16SYS;
        wanted.channels = 2;
        wanted.samples = blockFrames;
        wanted.callback = &Device::callback;
        wanted.userdata = &output;
        // No change is allowed, so SDL converts where the device wants something else.
        device_ = system_->sdl().openAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    }

    ~Device()
    {
        if (device_ != 0)
            system_->sdl().closeAudioDevice(device_);
    }

    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    explicit operator bool() const { return device_ != 0; }
    void rest(bool resting) const { system_->sdl().pauseAudioDevice(device_, resting ? 1 : 0); }
    bool isSilent() const { return system_->isSilent(); }
    bool isAlive() const { return system_->sdl().audioDeviceStatus(device_) != SDL_AUDIO_STOPPED; }

private:
    static void callback(void* output, Uint8* bytes, int length)
    {
        const std::span block(static_cast<std::int16_t*>(static_cast<void*>(bytes)),
                              static_cast<std::size_t>(length) / sizeof(std::int16_t));
        static_cast<SoundOutput*>(output)->fill(block);
    }

    std::shared_ptr<const SoundSystem> system_;
    SDL_AudioDeviceID device_ = 0;
};

SoundOutput::SoundOutput(platform::EventLoop& loop, platform::Diagnostics& log) : loop_(loop), log_(log) {}

SoundOutput::~SoundOutput() = default;

bool SoundOutput::add(std::shared_ptr<Voice> voice)
{
    if (!open())
        return false;
    restTimer_.reset();
    {
        const auto held = lock();
        voices_.push_back(std::move(voice));
    }
    device_->rest(false);
    return true;
}

bool SoundOutput::open()
{
    if (isAlive())
        return true;
    device_.reset();
    auto device = std::make_unique<Device>(SoundSystem::best(), *this);
    if (!*device) {
        const std::string why = SoundSystem::error();
        // One sound system at a time: the first must be gone before the silent one starts.
        device.reset();
        device = std::make_unique<Device>(SoundSystem::silent(), *this);
        if (!std::exchange(toldOfNoDevice_, true))
            log_.line("sound", "no sound device, playing silently: " + why);
    }
    if (!*device)
        return false;
    device_ = std::move(device);
    return true;
}

void SoundOutput::remove(const std::shared_ptr<Voice>& voice)
{
    bool silent = false;
    {
        const auto held = lock();
        if (std::erase(voices_, voice) == 0)
            return;
        voice->rest();
        silent = voices_.empty();
    }
    if (!silent || !device_)
        return;
    device_->rest(true);
    closeSoon();
}

bool SoundOutput::prepare()
{
    if (isAlive())
        return true;
    if (!open())
        return false;
    closeSoon();
    return true;
}

bool SoundOutput::isAlive() const
{
    return device_ != nullptr && device_->isAlive();
}

bool SoundOutput::isSilent() const
{
    return device_ == nullptr || device_->isSilent();
}

/// A timer is not ended inside its own tick; add() and close() end it.
void SoundOutput::closeSoon()
{
    restTimer_ = loop_.every(std::chrono::seconds{2}, [this] { device_.reset(); });
}

void SoundOutput::close()
{
    restTimer_.reset();
    device_.reset();
}

void SoundOutput::fill(std::span<std::int16_t> block)
{
    std::ranges::fill(block, std::int16_t{0});
    const auto now = std::chrono::steady_clock::now();
    const auto held = lock();
    for (const auto& voice : voices_)
        voice->mixInto(block, now);
}

}
