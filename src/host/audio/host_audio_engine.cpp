#include "host/audio/host_audio_engine.h"

#include "base/red_book.h"
#include "base/text.h"
#include "host/audio/decode_stream.h"
#include "host/audio/playback_stream.h"
#include "host/audio/read_ahead.h"

#include <cmath>
#include <limits>
#include <system_error>

namespace tonquay::host {

namespace {

constexpr std::chrono::milliseconds patience{500};

std::int64_t trackBytes(const platform::DiscTrack& track)
{
    return static_cast<std::int64_t>(track.sectorCount) * static_cast<std::int64_t>(Disc::sectorBytes);
}

}

/// Where a stream comes from.
struct HostAudioEngine::Source {
    std::uint32_t drive;
    std::int32_t trackIndex;
    platform::DiscTrack track;
    std::shared_ptr<Disc> disc;
};

HostAudioEngine::HostAudioEngine(DriveSet& drives, platform::EventLoop& loop, platform::Diagnostics& log)
    : drives_(drives),
      loop_(loop),
      log_(log),
      output_(loop, log),
      alive_(std::make_shared<const bool>(true))
{}

HostAudioEngine::~HostAudioEngine() = default;

bool HostAudioEngine::BASS_Init(std::int32_t device, std::uint32_t, std::uint32_t, std::uintptr_t, std::uintptr_t)
{
    if (ready_ || device != 1)
        return false;
    ready_ = true;
    return true;
}

bool HostAudioEngine::BASS_Stop()
{
    const auto streams = streams_;
    for (const auto& [handle, stream] : streams)
        if ((stream->flags() & BASS_STREAM_DECODE) == 0)
            BASS_ChannelStop(handle);
    return ready_;
}

bool HostAudioEngine::BASS_Free()
{
    if (!ready_)
        return false;
    ready_ = false;
    const auto streams = std::exchange(streams_, {});
    for (const auto& [handle, stream] : streams)
        stream->stop();
    output_.close();
    reaper_.joinAll(patience);
    return true;
}

float HostAudioEngine::BASS_GetVolume()
{
    return Stream::startVolume;
}

HostAudioEngine::Handle HostAudioEngine::BASS_CD_StreamCreate(std::uint32_t drive, std::int32_t track,
                                                              std::uint32_t flags)
{
    // Also for a stream that is refused below: whoever asks has let go of the handle of what played.
    if ((flags & BASS_STREAM_DECODE) != 0)
        endPlayback();
    Drive* const from = driveAt(drive);
    if (!ready_ || from == nullptr || track < 0)
        return 0;
    const std::shared_ptr<Disc> disc = from->openDisc();
    if (!disc || static_cast<std::size_t>(track) >= disc->tracks().size())
        return 0;
    const platform::DiscTrack entry = disc->tracks()[static_cast<std::size_t>(track)];
    if (!entry.audio || entry.sectorCount <= 0 ||
        entry.firstSector > std::numeric_limits<int>::max() - entry.sectorCount)
        return 0;

    const Handle handle = newHandle();
    try {
        streams_[handle] = makeStream(handle, {drive, track, entry, disc}, flags);
    } catch (const std::system_error& error) {
        log_.line("sound", std::string("no thread to read a track: ") + error.what());
        streams_.erase(handle);
        return 0;
    }
    return handle;
}

std::shared_ptr<Stream> HostAudioEngine::makeStream(Handle handle, const Source& source, std::uint32_t flags)
{
    const ReadAhead::Stretch stretch{source.track.firstSector, source.track.sectorCount};
    const std::int64_t length = trackBytes(source.track);

    if ((flags & BASS_STREAM_DECODE) != 0) {
        auto reader = std::make_unique<ReadAhead>(source.disc, stretch, ReadAhead::Wishes{.checksum = true}, reaper_);
        const platform::DecodeReport origin{.drive = source.drive, .track = source.trackIndex, .bytesExpected = length};
        return std::make_shared<DecodeStream>(flags, std::move(reader), origin,
                                              [this](const platform::DecodeReport& report) { decodeEnded(report); });
    }

    ReadAhead::Wishes wishes;
    wishes.whenDrained = [this, alive = std::weak_ptr(alive_), handle](std::uint32_t generation) {
        loop_.post([this, alive, handle, generation] {
            if (!alive.expired())
                playbackEnded(handle, generation);
        });
    };
    auto reader = std::make_unique<ReadAhead>(source.disc, stretch, std::move(wishes), reaper_);
    return std::make_shared<PlaybackStream>(flags, length, std::move(reader), output_);
}

/// The next number: one that was refused once stays refused until all others were handed out.
HostAudioEngine::Handle HostAudioEngine::newHandle()
{
    do
        ++lastHandle_;
    while (lastHandle_ == 0 || streams_.contains(lastHandle_));
    return lastHandle_;
}

void HostAudioEngine::endPlayback()
{
    std::vector<Handle> heard;
    for (const auto& [handle, stream] : streams_)
        if (!stream->decodes())
            heard.push_back(handle);
    for (const Handle handle : heard)
        BASS_StreamFree(handle);
}

bool HostAudioEngine::BASS_StreamFree(Handle stream)
{
    const auto found = find(stream);
    if (!found)
        return false;
    streams_.erase(stream);
    found->stop();
    return true;
}

void HostAudioEngine::playbackEnded(Handle handle, std::uint32_t generation)
{
    const auto found = find(handle);
    const ReadAhead::End end = found ? found->finish(generation) : ReadAhead::End::none;
    if (end == ReadAhead::End::none)
        return;
    if (end != ReadAhead::End::complete)
        log_.line("sound", "playing ended early: the disc gave no data");
    if (found->autoFree())
        streams_.erase(handle);
    found->tellEnd();
}

void HostAudioEngine::decodeEnded(const platform::DecodeReport& report)
{
    using End = platform::DecodeReport::End;
    if (report.end == End::unreadable || report.end == End::gone) {
        const std::string what = report.end == End::gone ? "the disc is gone" : "no data";
        log_.line("sound", "drive " + base::utf8(std::wstring(1, driveLetter(report.drive))) + ", track " +
                               std::to_string(report.track + 1) + ": " + what + " at sector " +
                               std::to_string(report.firstBadSector));
    }
    if (onDecodeEnd_)
        onDecodeEnd_(report);
}

bool HostAudioEngine::BASS_ChannelPlay(Handle stream, bool restart)
{
    const auto found = find(stream);
    return found && found->play(restart);
}

bool HostAudioEngine::BASS_ChannelPause(Handle stream)
{
    const auto found = find(stream);
    return found && found->pause();
}

bool HostAudioEngine::BASS_ChannelStop(Handle stream)
{
    const auto found = find(stream);
    if (!found)
        return false;
    if (found->autoFree())
        streams_.erase(stream);
    found->stop();
    return true;
}

HostAudioEngine::Active HostAudioEngine::BASS_ChannelIsActive(Handle stream)
{
    const auto found = find(stream);
    return found ? found->active() : stopped;
}

bool HostAudioEngine::BASS_ChannelGetInfo(Handle stream, ChannelInfo& info)
{
    const auto found = find(stream);
    if (!found)
        return false;
    info = {.freq = framesPerSecond, .chans = 2, .flags = found->flags()};
    return true;
}

bool HostAudioEngine::BASS_ChannelGetAttribute(Handle stream, std::uint32_t attribute, float& value)
{
    const auto found = find(stream);
    if (!found)
        return false;
    switch (attribute) {
    case BASS_ATTRIB_FREQ: value = framesPerSecond; return true;
    case BASS_ATTRIB_VOL: value = found->volume(); return true;
    case BASS_ATTRIB_PAN: value = found->pan(); return true;
    default: return false;
    }
}

bool HostAudioEngine::BASS_ChannelSetAttribute(Handle stream, std::uint32_t attribute, float value)
{
    constexpr float sameVolume = -1;
    constexpr float samePan = -101;
    const auto found = find(stream);
    if (!found || std::isnan(value))
        return false;
    switch (attribute) {
    case BASS_ATTRIB_VOL:
        if (value != sameVolume)
            found->setGains(std::clamp(value, 0.0F, 100.0F), found->pan());
        return true;
    case BASS_ATTRIB_PAN:
        if (value != samePan)
            found->setGains(found->volume(), std::clamp(value, -100.0F, 100.0F));
        return true;
    default: return false;
    }
}

std::int32_t HostAudioEngine::BASS_ChannelGetLevel(Handle stream)
{
    const auto found = find(stream);
    return found ? levelWord(found->peaks()) : -1;
}

std::int64_t HostAudioEngine::BASS_ChannelGetLength(Handle stream, std::uint32_t mode)
{
    const auto found = find(stream);
    return found && mode == 0 ? found->length() : -1;
}

std::int64_t HostAudioEngine::BASS_ChannelGetPosition(Handle stream, std::uint32_t mode)
{
    const auto found = find(stream);
    return found && mode == 0 ? found->position() : 0;
}

bool HostAudioEngine::BASS_ChannelSetPosition(Handle stream, std::int64_t position, std::uint32_t mode)
{
    const auto found = find(stream);
    return found && mode == 0 && found->seek(position);
}

double HostAudioEngine::BASS_ChannelBytes2Seconds(Handle stream, std::int64_t position)
{
    return find(stream) ? static_cast<double>(position) / base::red_book::bytesPerSecond : 0;
}

std::int32_t HostAudioEngine::BASS_ChannelGetData(Handle stream, std::span<std::byte> buffer)
{
    const auto found = find(stream);
    if (!found)
        return -1;
    const std::int32_t delivered = found->data(buffer);
    if ((found->flags() & BASS_STREAM_DECODE) != 0 && found->autoFree() && found->active() == stopped)
        streams_.erase(stream);
    return delivered;
}

std::uint32_t HostAudioEngine::BASS_ChannelSetSync(Handle stream, std::uint32_t type, std::int64_t,
                                                   SyncCallback callback, std::uint32_t user)
{
    const auto found = find(stream);
    return found ? found->addSync(type, callback, user) : 0;
}

std::shared_ptr<Stream> HostAudioEngine::find(Handle stream) const
{
    const auto found = streams_.find(stream);
    return found == streams_.end() ? nullptr : found->second;
}

}
