#pragma once

#include <memory>
#include <string>

namespace tonquay::host {

struct SdlLibrary;

/// SDL's sound alone, without its events: those would take over the signals that end a program.
///
/// The library has one sound system for the whole process, and starting it anew closes whatever plays or records. So
/// all devices share the one that runs; it ends with its last device. All calls belong to the logic's thread.
class SoundSystem {
public:
    /// The one that runs, or else the one that SDL finds best or SDL_AUDIODRIVER names. Null when there is none.
    static std::shared_ptr<const SoundSystem> best();

    /// One without any sound, that runs at the right speed. Null while another one runs.
    static std::shared_ptr<const SoundSystem> silent();

    ~SoundSystem();
    SoundSystem(const SoundSystem&) = delete;
    SoundSystem& operator=(const SoundSystem&) = delete;

    const SdlLibrary& sdl() const { return library_; }
    bool isSilent() const;      ///< plays nothing, and records silence
    std::string driver() const; ///< "pulseaudio"

    static std::string error(); ///< why the last call has failed

    /// Takes over a library whose sound best() or silent() has started.
    explicit SoundSystem(const SdlLibrary& library) : library_(library) {}

private:
    static std::shared_ptr<const SoundSystem> start(const char* driver);

    const SdlLibrary& library_;
};

}
