#include "host/audio/playback_stream.h"

#include <algorithm>

namespace tonquay::host {

PlaybackStream::PlaybackStream(std::uint32_t flags, std::int64_t length, std::unique_ptr<ReadAhead> source,
                               SoundOutput& output)
    : Stream(flags, length),
      output_(output),
      voice_(std::make_shared<Voice>(std::move(source)))
{
    voice_->setGains(volume(), pan());
}

PlaybackStream::~PlaybackStream()
{
    output_.remove(voice_);
}

Stream::Engine::Active PlaybackStream::active()
{
    const auto held = output_.lock();
    return state_ == Engine::playing && voice_->starving() ? Engine::stalled : state_;
}

std::int64_t PlaybackStream::position()
{
    const auto held = output_.lock();
    return state_ == Engine::playing ? voice_->heardPosition(std::chrono::steady_clock::now())
                                     : voice_->takenPosition();
}

Peaks PlaybackStream::peaks()
{
    const auto held = output_.lock();
    return voice_->heardPeaks();
}

bool PlaybackStream::play(bool restart)
{
    ++episode_;
    if (restart || lastEnd_ == ReadAhead::End::complete)
        moveTo(0);
    else if (lastEnd_ != ReadAhead::End::none)
        moveTo(voice_->takenPosition());
    if (state_ == Engine::playing)
        return true;
    if (!output_.add(voice_))
        return false;
    state_ = Engine::playing;
    return true;
}

bool PlaybackStream::pause()
{
    if (state_ != Engine::playing)
        return false;
    output_.remove(voice_);
    state_ = Engine::paused;
    return true;
}

void PlaybackStream::stop()
{
    ++episode_;
    output_.remove(voice_);
    state_ = Engine::stopped;
}

bool PlaybackStream::seek(std::int64_t position)
{
    if (position < 0 || position > length())
        return false;
    moveTo(position - position % static_cast<std::int64_t>(frameBytes));
    return true;
}

void PlaybackStream::moveTo(std::int64_t position)
{
    const auto held = output_.lock();
    lastEnd_ = ReadAhead::End::none;
    // A stream that was just made has its first bytes read already, or is about to.
    const bool there = voice_->takenPosition() == position && voice_->source().end() == ReadAhead::End::none;
    if (!there)
        voice_->seek(position);
}

std::uint32_t PlaybackStream::addSync(std::uint32_t type, const Engine::SyncCallback& callback, std::uint32_t user)
{
    const std::uint32_t kind = type & ~Engine::BASS_SYNC_ONETIME;
    const bool known =
        kind == Engine::BASS_SYNC_END || kind == Engine::BASS_SYNC_CD_ERROR || kind == Engine::BASS_SYNC_SLIDE;
    if (!known || !callback)
        return 0;
    syncs_.push_back({++lastSync_, kind, kind != type, callback, user});
    return lastSync_;
}

ReadAhead::End PlaybackStream::finish(std::uint32_t generation)
{
    if (state_ != Engine::playing)
        return ReadAhead::End::none;
    {
        const auto held = output_.lock();
        if (voice_->source().generation() != generation)
            return ReadAhead::End::none;
        lastEnd_ = voice_->source().end();
    }
    output_.remove(voice_);
    state_ = Engine::stopped;
    return lastEnd_;
}

void PlaybackStream::tellEnd()
{
    const std::uint32_t type =
        lastEnd_ == ReadAhead::End::complete ? Engine::BASS_SYNC_END : Engine::BASS_SYNC_CD_ERROR;
    std::vector<Sync> due;
    std::ranges::copy_if(syncs_, std::back_inserter(due), [type](const Sync& sync) { return sync.type == type; });
    std::erase_if(syncs_, [type](const Sync& sync) { return sync.type == type && sync.once; });

    const std::uint32_t episode = episode_;
    for (const Sync& sync : due) {
        if (episode_ != episode)
            return;
        sync.callback(sync.user);
    }
}

void PlaybackStream::applyGains()
{
    const auto held = output_.lock();
    voice_->setGains(volume(), pan());
}

}
