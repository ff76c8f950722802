#include "host/audio/sound_output.h"

#include "host/audio/sdl_library.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tonquay::host {

namespace {

/// SDL's sound alone, without its events: those would take over the signals that end a program.
class SoundSystem {
public:
    /// `driver` null: the one that SDL finds best, or that SDL_AUDIODRIVER names.
    explicit SoundSystem(const char* driver)
        : library_(SdlLibrary::load()),
          good_(library_ != nullptr && library_->audioInit(driver) == 0)
    {}
    ~SoundSystem()
    {
        if (good_)
            library_->audioQuit();
    }
    SoundSystem(const SoundSystem&) = delete;
    SoundSystem& operator=(const SoundSystem&) = delete;

    explicit operator bool() const { return good_; }
    const SdlLibrary* operator->() const { return library_; }

    static std::string error()
    {
        const SdlLibrary* library = SdlLibrary::load();
        return library ? library->getError() : "SDL2 is not installed";
    }

private:
    const SdlLibrary* library_;
    bool good_;
};

constexpr int blockFrames = 1024;

}

class SoundOutput::Device {
public:
    Device(const char* driver, SoundOutput& output) : system_(driver)
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
        device_ = system_->openAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    }

    ~Device()
    {
        if (device_ != 0)
            system_->closeAudioDevice(device_);
    }

    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    explicit operator bool() const { return device_ != 0; }
    void rest(bool resting) const { system_->pauseAudioDevice(device_, resting ? 1 : 0); }

private:
    static void callback(void* output, Uint8* bytes, int length)
    {
        const std::span block(static_cast<std::int16_t*>(static_cast<void*>(bytes)),
                              static_cast<std::size_t>(length) / sizeof(std::int16_t));
        static_cast<SoundOutput*>(output)->fill(block);
    }

    SoundSystem system_;
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
    if (device_)
        return true;
    auto device = std::make_unique<Device>(nullptr, *this);
    if (!*device) {
        const std::string why = SoundSystem::error();
        // One sound system at a time: the first must be gone before the silent one starts.
        device.reset();
        device = std::make_unique<Device>("dummy", *this);
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
    // A timer is not ended inside its own tick; add() and close() end it.
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
