#include "host/audio/track_player.h"

#include <string>
#include <system_error>

namespace tonquay::host {

TrackPlayer::TrackPlayer(platform::EventLoop& loop, platform::Diagnostics& log)
    : loop_(loop),
      log_(log),
      output_(loop, log)
{}

bool TrackPlayer::play(std::shared_ptr<Disc> disc, ReadAhead::Stretch stretch)
{
    constexpr float fullVolume = 100;
    stop();
    const auto place = std::make_shared<std::weak_ptr<PlaybackStream>>();
    ReadAhead::Wishes wishes;
    wishes.whenDrained = [this, place](std::uint32_t generation) {
        loop_.post([this, place, generation] {
            if (const auto stream = place->lock(); stream && stream == stream_)
                ended(generation);
        });
    };
    try {
        auto reader = std::make_unique<ReadAhead>(std::move(disc), stretch, std::move(wishes), reaper_);
        const std::int64_t bytes = std::int64_t{Disc::sectorBytes} * stretch.sectorCount;
        stream_ = std::make_shared<PlaybackStream>(0, bytes, std::move(reader), output_);
    } catch (const std::system_error& error) {
        log_.line("sound", std::string("no thread to read a track: ") + error.what());
        return false;
    }
    *place = stream_;
    stream_->setGains(fullVolume, 0);
    if (stream_->play(false))
        return true;
    stop();
    return false;
}

void TrackPlayer::pause()
{
    if (stream_)
        stream_->pause();
}

void TrackPlayer::resume()
{
    if (stream_ && stream_->active() == Stream::Engine::paused)
        stream_->play(false);
}

void TrackPlayer::stop()
{
    if (stream_)
        stream_->stop();
    stream_.reset();
}

Stream::Engine::Active TrackPlayer::active() const
{
    return stream_ ? stream_->active() : Stream::Engine::stopped;
}

void TrackPlayer::ended(std::uint32_t generation)
{
    const ReadAhead::End end = stream_->finish(generation);
    if (end != ReadAhead::End::none && end != ReadAhead::End::complete)
        log_.line("sound", "playing ended early: the disc gave no data");
}

}
