#include "support/fake_audio_engine.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace tonquay::test {

namespace {

constexpr std::int64_t bytesPerSecond = 176400;

std::chrono::nanoseconds playTime(std::int64_t bytes)
{
    return std::chrono::nanoseconds{bytes * 1'000'000'000 / bytesPerSecond};
}

}

template <class... Arguments>
void FakeAudioEngine::note(const char* name, Arguments... arguments)
{
    std::ostringstream line;
    line << name << '(';
    std::size_t left = sizeof...(arguments);
    ((line << arguments << (--left > 0 ? ", " : "")), ...);
    line << ')';
    calls.push_back(line.str());
}

std::byte FakeAudioEngine::patternByte(std::int32_t track, std::int64_t place)
{
    // A plain counter would repeat with every block of 256 bytes; the product makes each place of a track its own.
    const auto mixed = static_cast<std::uint64_t>(place + 1) * 2654435761u + static_cast<std::uint64_t>(track) * 40503u;
    return static_cast<std::byte>(mixed >> 13 & 0xFF);
}

std::string FakeAudioEngine::pattern(std::int32_t track, std::int64_t bytes)
{
    std::string sound(static_cast<std::size_t>(bytes), '\0');
    for (std::size_t place = 0; place < sound.size(); ++place)
        sound[place] = static_cast<char>(patternByte(track, static_cast<std::int64_t>(place)));
    return sound;
}

void FakeAudioEngine::insertDisc(std::size_t index, const std::vector<std::int32_t>& trackBytes)
{
    if (drives.size() <= index)
        drives.resize(index + 1);
    drives[index].open = false;
    drives[index].tracks.clear();
    for (const std::int32_t bytes : trackBytes)
        drives[index].tracks.push_back({bytes, true, -1});
}

void FakeAudioEngine::removeDisc(std::size_t index)
{
    drives.at(index).tracks.clear();
}

void FakeAudioEngine::fireSync(Handle handle, std::uint32_t type)
{
    loop_.post([this, handle, type] {
        const Stream* found = stream(handle);
        if (found == nullptr)
            return;
        const std::vector<Sync> syncs = found->syncs;
        for (const Sync& sync : syncs) {
            const bool still =
                stream(handle) != nullptr &&
                std::ranges::any_of(stream(handle)->syncs, [&](const Sync& other) { return other.id == sync.id; });
            if ((sync.type & ~BASS_SYNC_ONETIME) != type || !still)
                continue;
            if ((sync.type & BASS_SYNC_ONETIME) != 0)
                std::erase_if(stream(handle)->syncs, [&](const Sync& other) { return other.id == sync.id; });
            sync.callback(sync.user);
        }
    });
}

std::vector<std::string> FakeAudioEngine::callsOf(std::string_view name) const
{
    std::vector<std::string> found;
    std::ranges::copy_if(calls, std::back_inserter(found),
                         [&](const std::string& call) { return call.starts_with(name); });
    return found;
}

const FakeAudioEngine::Track* FakeAudioEngine::track(std::uint32_t index, std::int64_t number) const
{
    if (index >= drives.size() || drives[index].open || number < 0 ||
        static_cast<std::size_t>(number) >= drives[index].tracks.size())
        return nullptr;
    return &drives[index].tracks[static_cast<std::size_t>(number)];
}

FakeAudioEngine::Stream* FakeAudioEngine::stream(Handle handle)
{
    const auto found = streams_.find(handle);
    return found == streams_.end() ? nullptr : &found->second;
}

std::int64_t FakeAudioEngine::playedTo(const Stream& s) const
{
    if (s.decodes() || s.active != playing)
        return s.position;
    const std::int64_t played = (clock_.elapsed() - s.since).count() * bytesPerSecond / 1'000'000'000;
    return std::min(s.length, s.position + played);
}

/// Fixes the place that playback has reached and goes on from there as `active`.
void FakeAudioEngine::hold(Stream& s, Active active)
{
    s.position = playedTo(s);
    s.since = clock_.elapsed();
    s.active = active;
    ++s.turn;
}

void FakeAudioEngine::planEnd(Handle handle)
{
    const Stream& planned = *stream(handle);
    loop_.after(playTime(planned.length - planned.position), [this, handle, turn = planned.turn] {
        Stream* s = stream(handle);
        if (s == nullptr || s->turn != turn)
            return;
        const std::vector<Sync> syncs = s->syncs;
        stopStream(handle);
        for (const Sync& sync : syncs)
            if ((sync.type & ~BASS_SYNC_ONETIME) == BASS_SYNC_END)
                sync.callback(sync.user);
    });
}

void FakeAudioEngine::stopStream(Handle handle)
{
    Stream& s = *stream(handle);
    hold(s, stopped);
    if ((s.flags & BASS_STREAM_AUTOFREE) != 0)
        streams_.erase(handle);
}

bool FakeAudioEngine::BASS_Init(std::int32_t device, std::uint32_t frequency, std::uint32_t flags,
                                std::uintptr_t window, std::uintptr_t classId)
{
    note("BASS_Init", device, frequency, flags, window, classId);
    return initWorks;
}

bool FakeAudioEngine::BASS_Stop()
{
    note("BASS_Stop");
    for (auto next = streams_.begin(); next != streams_.end();) {
        const Handle handle = next->first;
        const bool heard = !next->second.decodes();
        ++next;
        if (heard)
            stopStream(handle);
    }
    return true;
}

bool FakeAudioEngine::BASS_Free()
{
    note("BASS_Free");
    streams_.clear();
    return true;
}

float FakeAudioEngine::BASS_GetVolume()
{
    note("BASS_GetVolume");
    return 50;
}

bool FakeAudioEngine::BASS_CD_GetInfo(std::uint32_t index, DriveInfo& info)
{
    note("BASS_CD_GetInfo", index);
    if (drive(index) == nullptr)
        return false;
    info = drive(index)->info;
    return true;
}

bool FakeAudioEngine::BASS_CD_IsReady(std::uint32_t index)
{
    note("BASS_CD_IsReady", index);
    return drive(index) != nullptr && !drive(index)->open &&
           std::ranges::any_of(drive(index)->tracks, [](const Track& t) { return t.audio; });
}

std::int32_t FakeAudioEngine::BASS_CD_GetTracks(std::uint32_t index)
{
    note("BASS_CD_GetTracks", index);
    const Drive* d = drive(index);
    return d == nullptr || d->open || d->tracks.empty() ? -1 : static_cast<std::int32_t>(d->tracks.size());
}

std::int32_t FakeAudioEngine::BASS_CD_GetTrackLength(std::uint32_t index, std::uint32_t number)
{
    note("BASS_CD_GetTrackLength", index, number);
    const Track* t = track(index, number);
    return t == nullptr || !t->audio ? -1 : t->bytes;
}

std::string FakeAudioEngine::BASS_CD_GetID(std::uint32_t index, std::uint32_t id)
{
    note("BASS_CD_GetID", index, id);
    return drive(index) != nullptr && id == BASS_CDID_TEXT ? drive(index)->cdText : std::string();
}

bool FakeAudioEngine::BASS_CD_Door(std::uint32_t index, std::uint32_t action)
{
    note("BASS_CD_Door", index, action);
    Drive* d = drive(index);
    if (d == nullptr || !d->doorWorks || (action == openDoor && d->locked))
        return false;
    if (action == openDoor || action == closeDoor)
        d->open = action == openDoor;
    else
        d->locked = action == lockDoor;
    return true;
}

bool FakeAudioEngine::BASS_CD_DoorIsOpen(std::uint32_t index)
{
    note("BASS_CD_DoorIsOpen", index);
    return drive(index) != nullptr && drive(index)->open;
}

bool FakeAudioEngine::BASS_CD_DoorIsLocked(std::uint32_t index)
{
    note("BASS_CD_DoorIsLocked", index);
    return drive(index) != nullptr && drive(index)->locked;
}

FakeAudioEngine::Handle FakeAudioEngine::BASS_CD_StreamCreate(std::uint32_t index, std::int32_t number,
                                                              std::uint32_t flags)
{
    note("BASS_CD_StreamCreate", index, number, flags);
    if ((flags & BASS_STREAM_DECODE) != 0)
        std::erase_if(streams_, [](const auto& entry) { return !entry.second.decodes(); });
    const Track* t = track(index, number);
    if (!streamsWork || t == nullptr || !t->audio)
        return 0;
    Stream made;
    made.drive = index;
    made.track = number;
    made.flags = flags;
    made.length = t->bytes;
    made.active = made.decodes() && t->bytes > 0 ? playing : stopped;
    made.attributes = {{BASS_ATTRIB_FREQ, 44100.0F}, {BASS_ATTRIB_VOL, 50.0F}, {BASS_ATTRIB_PAN, 0.0F}};
    streams_.emplace(++lastHandle_, std::move(made));
    return lastHandle_;
}

bool FakeAudioEngine::BASS_StreamFree(Handle handle)
{
    note("BASS_StreamFree", handle);
    return streams_.erase(handle) > 0;
}

bool FakeAudioEngine::BASS_ChannelPlay(Handle handle, bool restart)
{
    note("BASS_ChannelPlay", handle, restart);
    Stream* s = stream(handle);
    if (s == nullptr || s->decodes() || !playWorks)
        return false;
    hold(*s, playing);
    if (restart || s->position >= s->length)
        s->position = 0;
    planEnd(handle);
    return true;
}

bool FakeAudioEngine::BASS_ChannelPause(Handle handle)
{
    note("BASS_ChannelPause", handle);
    Stream* s = stream(handle);
    if (s == nullptr || s->decodes() || s->active != playing)
        return false;
    hold(*s, paused);
    return true;
}

bool FakeAudioEngine::BASS_ChannelStop(Handle handle)
{
    note("BASS_ChannelStop", handle);
    if (stream(handle) == nullptr)
        return false;
    stopStream(handle);
    return true;
}

platform::AudioEngine::Active FakeAudioEngine::BASS_ChannelIsActive(Handle handle)
{
    note("BASS_ChannelIsActive", handle);
    return stream(handle) == nullptr ? stopped : stream(handle)->active;
}

bool FakeAudioEngine::BASS_ChannelGetInfo(Handle handle, ChannelInfo& info)
{
    note("BASS_ChannelGetInfo", handle);
    if (stream(handle) == nullptr)
        return false;
    info = {44100, 2, stream(handle)->flags};
    return true;
}

bool FakeAudioEngine::BASS_ChannelGetAttribute(Handle handle, std::uint32_t attribute, float& value)
{
    note("BASS_ChannelGetAttribute", handle, attribute);
    const Stream* s = stream(handle);
    if (s == nullptr || !s->attributes.contains(attribute))
        return false;
    value = s->attributes.at(attribute);
    return true;
}

bool FakeAudioEngine::BASS_ChannelSetAttribute(Handle handle, std::uint32_t attribute, float value)
{
    note("BASS_ChannelSetAttribute", handle, attribute, value);
    Stream* s = stream(handle);
    if (s == nullptr || !s->attributes.contains(attribute))
        return false;
    const bool noChange =
        (attribute == BASS_ATTRIB_VOL && value == -1.0F) || (attribute == BASS_ATTRIB_PAN && value == -101.0F);
    if (!noChange)
        s->attributes[attribute] = value;
    return true;
}

std::int32_t FakeAudioEngine::BASS_ChannelGetLevel(Handle handle)
{
    note("BASS_ChannelGetLevel", handle);
    const Stream* s = stream(handle);
    if (s == nullptr)
        return -1;
    if (s->decodes())
        return s->level;
    return s->active == playing ? level : 0;
}

std::int64_t FakeAudioEngine::BASS_ChannelGetLength(Handle handle, std::uint32_t mode)
{
    note("BASS_ChannelGetLength", handle, mode);
    return stream(handle) == nullptr ? -1 : stream(handle)->length;
}

std::int64_t FakeAudioEngine::BASS_ChannelGetPosition(Handle handle, std::uint32_t mode)
{
    note("BASS_ChannelGetPosition", handle, mode);
    return stream(handle) == nullptr ? 0 : playedTo(*stream(handle));
}

bool FakeAudioEngine::BASS_ChannelSetPosition(Handle handle, std::int64_t position, std::uint32_t mode)
{
    note("BASS_ChannelSetPosition", handle, position, mode);
    Stream* s = stream(handle);
    if (s == nullptr || position < 0 || position > s->length)
        return false;
    hold(*s, s->active);
    s->position = position;
    if (!s->decodes() && s->active == playing)
        planEnd(handle);
    return true;
}

double FakeAudioEngine::BASS_ChannelBytes2Seconds(Handle handle, std::int64_t position)
{
    note("BASS_ChannelBytes2Seconds", handle, position);
    return stream(handle) == nullptr ? 0.0 : static_cast<double>(position) / static_cast<double>(bytesPerSecond);
}

std::int32_t FakeAudioEngine::BASS_ChannelGetData(Handle handle, std::span<std::byte> buffer)
{
    note("BASS_ChannelGetData", handle, buffer.size());
    Stream* s = stream(handle);
    if (s == nullptr || !s->decodes() || s->active != playing)
        return -1;
    const Track* t = track(s->drive, s->track);
    std::int64_t readable = 0;
    if (t != nullptr)
        readable = t->unreadableFrom < 0 ? s->length : std::min<std::int64_t>(s->length, t->unreadableFrom);
    const std::int64_t wanted = std::min(static_cast<std::int64_t>(buffer.size()), s->length - s->position);
    const std::int64_t given = std::min(wanted, readable - s->position);
    if (given <= 0) {
        s->active = stopped;
        return -1;
    }
    int peak[2] = {0, 0};
    for (std::int64_t i = 0; i < given; ++i)
        buffer[static_cast<std::size_t>(i)] = patternByte(s->track, s->position + i);
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(given); i += 2) {
        const auto bits = std::to_integer<unsigned>(buffer[i]) | std::to_integer<unsigned>(buffer[i + 1]) << 8;
        const int sample = std::abs(static_cast<int>(static_cast<std::int16_t>(bits)));
        peak[i / 2 % 2] = std::max(peak[i / 2 % 2], sample);
    }
    s->level = peak[1] << 16 | peak[0];
    s->position += given;
    if (s->position == s->length)
        s->active = stopped;
    return static_cast<std::int32_t>(given);
}

std::uint32_t FakeAudioEngine::BASS_ChannelSetSync(Handle handle, std::uint32_t type, std::int64_t param,
                                                   SyncCallback callback, std::uint32_t user)
{
    note("BASS_ChannelSetSync", handle, type, param, user);
    Stream* s = stream(handle);
    if (s == nullptr)
        return 0;
    s->syncs.push_back({++lastSync_, type, std::move(callback), user});
    return lastSync_;
}

}
