#include "host/audio/sound_system.h"

#include "host/audio/sdl_library.h"

namespace tonquay::host {

namespace {

std::weak_ptr<const SoundSystem>& running()
{
    static std::weak_ptr<const SoundSystem> one;
    return one;
}

constexpr const char* silentDriver = "dummy";

}

std::shared_ptr<const SoundSystem> SoundSystem::start(const char* driver)
{
    const SdlLibrary* library = SdlLibrary::load();
    if (library == nullptr || library->audioInit(driver) != 0)
        return nullptr;
    auto started = std::make_shared<const SoundSystem>(*library);
    running() = started;
    return started;
}

std::shared_ptr<const SoundSystem> SoundSystem::best()
{
    auto one = running().lock();
    return one ? one : start(nullptr);
}

std::shared_ptr<const SoundSystem> SoundSystem::silent()
{
    auto one = running().lock();
    if (one)
        return one->isSilent() ? one : nullptr;
    return start(silentDriver);
}

SoundSystem::~SoundSystem()
{
    library_.audioQuit();
}

bool SoundSystem::isSilent() const
{
    return driver() == silentDriver;
}

std::string SoundSystem::driver() const
{
    const char* name = library_.currentAudioDriver();
    return name != nullptr ? name : "";
}

std::string SoundSystem::error()
{
    const SdlLibrary* library = SdlLibrary::load();
    return library != nullptr ? library->getError() : "SDL2 is not installed";
}

}
