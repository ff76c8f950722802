#include "host/audio/sdl_library.h"

#include <bit>
#include <dlfcn.h>
#include <optional>

namespace tonquay::host {

namespace {

template <class Call>
bool find(void* library, const char* name, Call& call)
{
    call = std::bit_cast<Call>(dlsym(library, name));
    return call != nullptr;
}

std::optional<SdlLibrary> loadOnce()
{
    // Never closed: sound threads of the system's may outlive whatever asked for them.
    void* library = dlopen("libSDL2-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
    SdlLibrary calls;
    const bool complete = library != nullptr && find(library, "SDL_AudioInit", calls.audioInit) &&
                          find(library, "SDL_AudioQuit", calls.audioQuit) &&
                          find(library, "SDL_OpenAudioDevice", calls.openAudioDevice) &&
                          find(library, "SDL_CloseAudioDevice", calls.closeAudioDevice) &&
                          find(library, "SDL_PauseAudioDevice", calls.pauseAudioDevice) &&
                          find(library, "SDL_GetAudioDeviceStatus", calls.audioDeviceStatus) &&
                          find(library, "SDL_GetCurrentAudioDriver", calls.currentAudioDriver) &&
                          find(library, "SDL_GetError", calls.getError);
    return complete ? std::optional(calls) : std::nullopt;
}

}

const SdlLibrary* SdlLibrary::load()
{
    static const std::optional<SdlLibrary> loaded = loadOnce();
    return loaded ? &*loaded : nullptr;
}

}
