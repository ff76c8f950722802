#pragma once

#include "host/audio/sound_output.h"
#include "host/audio/stream.h"
#include "host/audio/voice.h"

#include <memory>
#include <vector>

namespace tonquay::host {

/// A track that is heard. Stopped, it keeps its place, and playing goes on there; from its end it starts anew.
///
/// Its position is what is heard just now, told from the blocks that the device took and from the clock; while it is
/// paused, the place at which it will go on.
class PlaybackStream : public Stream {
public:
    PlaybackStream(std::uint32_t flags, std::int64_t length, std::unique_ptr<ReadAhead> source, SoundOutput& output);
    ~PlaybackStream() override;

    Engine::Active active() override;
    std::int64_t position() override;
    Peaks peaks() override;
    void stop() override;

    bool play(bool restart) override;
    bool pause() override;

    /// Bytes, cut to a whole frame; false outside the track. Playing or paused goes on as it was.
    bool seek(std::int64_t position) override;

    std::uint32_t addSync(std::uint32_t type, const Engine::SyncCallback& callback, std::uint32_t user) override;
    ReadAhead::End finish(std::uint32_t generation) override;

    /// A sync that stops or plays this stream keeps the ones after it from being called.
    void tellEnd() override;

private:
    struct Sync {
        std::uint32_t id;
        std::uint32_t type;
        bool once;
        Engine::SyncCallback callback;
        std::uint32_t user;
    };

    void applyGains() override;
    void moveTo(std::int64_t position);

    SoundOutput& output_;
    std::shared_ptr<Voice> voice_;
    Engine::Active state_ = Engine::stopped;
    ReadAhead::End lastEnd_ = ReadAhead::End::none; ///< none when it was stopped or has not ended
    std::vector<Sync> syncs_;
    std::uint32_t lastSync_ = 0;
    std::uint32_t episode_ = 0; ///< counts plays and stops
};

}
