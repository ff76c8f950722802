#include "host/mci/cd_player.h"

#include "host/audio/read_ahead.h"
#include "platform/mci.h"

#include <string>
#include <system_error>
#include <utility>

namespace tonquay::host {

CdPlayer::CdPlayer(platform::EventLoop& loop, platform::Diagnostics& log, std::chrono::milliseconds patience)
    : loop_(loop),
      log_(log),
      patience_(patience),
      output_(loop, log)
{}

bool CdPlayer::prepareSound()
{
    return output_.prepare() && !output_.isSilent();
}

bool CdPlayer::play(std::shared_ptr<Disc> disc, int firstSector)
{
    stop();
    auto played = std::make_shared<PlayedDisc>(std::move(disc));
    const int end = DiscTimes(played->tracks()).sectors();
    std::unique_ptr<ReadAhead> reader;
    try {
        const ReadAhead::Stretch stretch{firstSector, end - firstSector};
        reader = std::make_unique<ReadAhead>(played, stretch, ReadAhead::Wishes{}, reaper_);
    } catch (const std::system_error& error) {
        log_.line("sound", std::string("no thread to read a disc: ") + error.what());
        return false;
    }
    auto voice = std::make_shared<Voice>(std::move(reader));
    voice->setTap(tap_);
    if (!output_.add(voice))
        return false;
    disc_ = std::move(played);
    voice_ = std::move(voice);
    firstSector_ = firstSector;
    endSector_ = end;
    place_ = firstSector;
    movedAt_ = std::chrono::steady_clock::now();
    over_ = false;
    return true;
}

void CdPlayer::stop()
{
    if (!voice_)
        return;
    place_ = position();
    unheard_ = untapVoice();
    output_.remove(voice_);
    voice_.reset();
    if (const int lost = disc_->sectorsLost(); lost > 0)
        log_.line(platform::Mci::troubleArea,
                  std::to_string(lost) + " sectors of the disc gave no data and are silent");
    disc_.reset();
}

void CdPlayer::rewind()
{
    stop();
    place_ = 0;
}

double CdPlayer::position()
{
    if (!voice_)
        return place_;
    if (!over_ && isOver())
        over_ = true;
    return over_ ? endSector_ : place_;
}

/// Also moves the place on.
bool CdPlayer::isOver()
{
    const double before = std::exchange(place_, placeNow());
    const auto now = std::chrono::steady_clock::now();
    if (place_ != before)
        movedAt_ = now;
    ReadAhead::End end = ReadAhead::End::none;
    {
        const auto held = output_.lock();
        if (voice_->heardPosition(now) >= voice_->takenPosition())
            end = voice_->source().end();
    }
    if (end == ReadAhead::End::gone)
        log_.line(platform::Mci::troubleArea, "the disc was taken out");
    else if (end == ReadAhead::End::unreadable)
        log_.line(platform::Mci::troubleArea, "the disc gives no data any more");
    else if (end == ReadAhead::End::none && now - movedAt_ > patience_)
        log_.line(platform::Mci::troubleArea, "nothing was played for too long, and the recording ends");
    else
        return end == ReadAhead::End::complete;
    return true;
}

double CdPlayer::placeNow()
{
    const auto held = output_.lock();
    const std::int64_t bytes = voice_->heardPosition(std::chrono::steady_clock::now());
    return firstSector_ + static_cast<double>(bytes) / double{Disc::sectorBytes};
}

void CdPlayer::setTap(Voice::Tap tap)
{
    tap_ = std::move(tap);
    unheard_ = 0;
    if (!voice_)
        return;
    const auto held = output_.lock();
    voice_->setTap(tap_);
}

std::int64_t CdPlayer::endTap()
{
    if (voice_)
        unheard_ = untapVoice();
    tap_ = {};
    return std::exchange(unheard_, 0);
}

std::int64_t CdPlayer::untapVoice()
{
    const auto held = output_.lock();
    voice_->setTap({});
    return tap_ ? voice_->takenPosition() - voice_->heardPosition(std::chrono::steady_clock::now()) : 0;
}

}
