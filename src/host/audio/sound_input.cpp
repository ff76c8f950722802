#include "host/audio/sound_input.h"

#include "host/audio/sdl_library.h"
#include "host/audio/sound.h"

#include <utility>

namespace tonquay::host {

std::unique_ptr<SoundInput> SoundInput::open(Heard heard)
{
    auto system = SoundSystem::best();
    if (!system || system->isSilent())
        return nullptr;
    auto input = std::make_unique<SoundInput>(std::move(system), std::move(heard));
    return input->device_ != 0 ? std::move(input) : nullptr;
}

SoundInput::SoundInput(std::shared_ptr<const SoundSystem> system, Heard heard)
    : system_(std::move(system)),
      heard_(std::move(heard))
{
    constexpr int capturing = 1;
    constexpr int blockFrames = 1024;
    SDL_AudioSpec wanted{};
    wanted.freq = framesPerSecond;
    wanted.format = AUDIO_S16LSB;
    wanted.channels = 2;
    wanted.samples = blockFrames;
    wanted.callback = &SoundInput::callback;
    wanted.userdata = this;
    device_ = system_->sdl().openAudioDevice(nullptr, capturing, &wanted, nullptr, 0);
    if (device_ != 0)
        system_->sdl().pauseAudioDevice(device_, 0);
}

SoundInput::~SoundInput()
{
    if (device_ != 0)
        system_->sdl().closeAudioDevice(device_);
}

bool SoundInput::isAlive() const
{
    return system_->sdl().audioDeviceStatus(device_) != SDL_AUDIO_STOPPED;
}

void SoundInput::callback(void* input, std::uint8_t* bytes, int length)
{
    const std::span<const std::uint8_t> block(bytes, static_cast<std::size_t>(length));
    static_cast<SoundInput*>(input)->heard_(std::as_bytes(block));
}

}
