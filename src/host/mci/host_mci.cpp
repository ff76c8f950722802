#include "host/mci/host_mci.h"

#include "base/text.h"
#include "host/mci/cd_audio.h"
#include "host/mci/command_words.h"
#include "host/mci/wave_audio.h"

#include <algorithm>
#include <utility>

namespace tonquay::host {

HostMci::HostMci(DriveSet& drives, platform::FileSystem& files, platform::EventLoop& loop, platform::Diagnostics& log,
                 Settings settings)
    : drives_(drives),
      files_(files),
      log_(log),
      settings_(std::move(settings)),
      player_(loop, log, settings_.patience)
{}

HostMci::~HostMci() = default;

std::uint32_t HostMci::mciSendString(std::wstring_view command, std::span<wchar_t> answer)
{
    const MciAnswer done = carryOut(command);
    if (!answer.empty())
        answer[done.text.copy(answer.data(), answer.size() - 1)] = L'\0';
    return done.code;
}

MciAnswer HostMci::carryOut(std::wstring_view command)
{
    constexpr std::size_t behindVerb = 1;
    const auto words = commandWords(command);
    if (words.empty())
        return {noCommand};
    if (base::sameText(words.front(), L"open")) {
        if (wordsAre(words, behindVerb, L"cdaudio alias *"))
            return {open(Type::cdaudio, words.back())};
        if (wordsAre(words, behindVerb, L"new type waveaudio alias *"))
            return {open(Type::waveaudio, words.back())};
        return {unknownDeviceType};
    }
    if (words.size() == behindVerb)
        return {missingWord};
    const auto found = devices_.find(base::upper(words[behindVerb]));
    if (found == devices_.end())
        return {unknownDevice};
    if (!base::sameText(words.front(), L"close"))
        return found->second.device->carryOut(words);
    if (words.size() != behindVerb + 1)
        return {unknownCommand};
    devices_.erase(found);
    return {};
}

std::uint32_t HostMci::open(Type type, const std::wstring& name)
{
    const std::wstring key = base::upper(name);
    if (devices_.contains(key))
        return nameInUse;
    if (std::ranges::any_of(devices_, [type](const auto& entry) { return entry.second.type == type; }))
        return deviceInUse;
    std::unique_ptr<MciDevice> device;
    if (type == Type::cdaudio)
        device = openCd();
    else
        device = openRecorder();
    if (!device)
        return deviceNotReady;
    devices_.emplace(key, Open{type, std::move(device)});
    return 0;
}

std::unique_ptr<MciDevice> HostMci::openCd()
{
    Drive* const taken = drive();
    auto tracks = taken != nullptr ? taken->tracks() : std::vector<platform::DiscTrack>();
    if (tracks.empty()) {
        log_.line("analog", "there is no audio disc to play");
        return nullptr;
    }
    return std::make_unique<CdAudio>(
        std::move(tracks), [taken] { return taken->openDisc(); }, player_);
}

/// Not without a place where a recording can lie: the disc would be played in vain.
std::unique_ptr<MciDevice> HostMci::openRecorder()
{
    if (const auto place = Recording::start(settings_.folder); !place) {
        log_.line(troubleArea, base::describe(place.failure()));
        return nullptr;
    }
    return std::make_unique<WaveAudio>(
        WaveAudio::Surroundings{.player = player_, .files = files_, .log = log_, .folder = settings_.folder});
}

Drive* HostMci::drive()
{
    const std::int16_t selected = settings_.selectedDrive ? settings_.selectedDrive() : std::int16_t{0};
    if (selected >= 1 && static_cast<std::size_t>(selected) <= drives_.count())
        return &drives_.at(static_cast<std::size_t>(selected) - 1);
    for (std::size_t i = 0; i < drives_.count(); ++i)
        if (!drives_.at(i).tracks().empty())
            return &drives_.at(i);
    return nullptr;
}

}
