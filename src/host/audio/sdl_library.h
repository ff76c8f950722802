#pragma once

#include <SDL.h>

namespace tonquay::host {

/// The calls of SDL's sound that this program makes. The library is loaded with the first sound and not before: it
/// brings some fifty others along, which a look at a disc or a rip would wait for in vain.
struct SdlLibrary {
    decltype(&SDL_AudioInit) audioInit = nullptr;
    decltype(&SDL_AudioQuit) audioQuit = nullptr;
    decltype(&SDL_OpenAudioDevice) openAudioDevice = nullptr;
    decltype(&SDL_CloseAudioDevice) closeAudioDevice = nullptr;
    decltype(&SDL_PauseAudioDevice) pauseAudioDevice = nullptr;
    decltype(&SDL_GetAudioDeviceStatus) audioDeviceStatus = nullptr;
    decltype(&SDL_GetCurrentAudioDriver) currentAudioDriver = nullptr;
    decltype(&SDL_GetError) getError = nullptr;

    /// All calls, or null on a system without the library. The same for the life of the process.
    static const SdlLibrary* load();
};

}
