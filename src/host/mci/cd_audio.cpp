#include "host/mci/cd_audio.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "host/mci/command_words.h"

namespace tonquay::host {

namespace {

using Mci = platform::Mci;
using Words = std::vector<std::wstring>;

constexpr std::int64_t msPerSecond = 1000;
constexpr std::size_t behindName = 2;

bool asks(const Words& words, std::wstring_view pattern)
{
    return wordsAre(words, behindName, pattern);
}

}

CdAudio::CdAudio(std::vector<platform::DiscTrack> tracks, DiscOpener openDisc, CdPlayer& player)
    : tracks_(std::move(tracks)),
      times_(tracks_),
      openDisc_(std::move(openDisc)),
      player_(player)
{
    player_.rewind();
}

MciAnswer CdAudio::carryOut(const Words& words)
{
    const std::wstring verb = base::upper(words.front());
    if (verb == L"INFO" && asks(words, L"identity"))
        return {0, base::fromHostBytes(discId(tracks_))};
    if (verb == L"STATUS")
        return status(words);
    if (verb == L"SET" && (asks(words, L"time format hms") || asks(words, L"time format milliseconds"))) {
        hms_ = asks(words, L"time format hms");
        return {};
    }
    if (verb == L"PLAY" && asks(words, L""))
        return play(0);
    if (verb == L"PLAY" && asks(words, L"from *")) {
        const auto ms = timeOf(words.back());
        if (!ms)
            return {Mci::badNumber};
        return *ms < times_.endMs() ? play(static_cast<int>(DiscTimes::sectorAt(*ms))) : MciAnswer{Mci::outOfRange};
    }
    if (verb == L"STOP" && asks(words, L"")) {
        player_.stop();
        return {};
    }
    return {Mci::unknownCommand};
}

MciAnswer CdAudio::status(const Words& words)
{
    if (asks(words, L"number of tracks"))
        return {0, base::digits(times_.trackCount())};
    if (asks(words, L"position"))
        return {0, timeText(static_cast<std::int64_t>(player_.position() * 40 / 3))};
    if (asks(words, L"current track"))
        return {0, base::digits(times_.trackAt(static_cast<int>(player_.position())))};
    if (!asks(words, L"length track *"))
        return {Mci::unknownCommand};
    const auto track = wholeNumber(words.back());
    if (!track)
        return {Mci::badNumber};
    if (*track < 1 || *track > times_.trackCount())
        return {Mci::outOfRange};
    return {0, timeText(times_.lengthMs(*track))};
}

MciAnswer CdAudio::play(int firstSector)
{
    auto disc = openDisc_();
    return {disc && player_.play(std::move(disc), firstSector) ? 0 : std::uint32_t{Mci::deviceNotReady}};
}

std::wstring CdAudio::timeText(std::int64_t ms) const
{
    if (!hms_)
        return base::digits(ms);
    const std::int64_t seconds = ms / msPerSecond;
    return base::twoDigits(seconds / 3600) + L":" + base::twoDigits(seconds / 60 % 60) + L":" +
           base::twoDigits(seconds % 60);
}

std::optional<std::int64_t> CdAudio::timeOf(std::wstring_view word) const
{
    if (!hms_)
        return wholeNumber(word);
    std::int64_t seconds = 0;
    for (int places = 0;; ++places) {
        const std::size_t colon = word.find(L':');
        const auto number = wholeNumber(word.substr(0, colon));
        if (!number || places > 2)
            return std::nullopt;
        seconds = seconds * 60 + *number;
        if (colon == std::wstring_view::npos)
            return seconds * msPerSecond;
        word.remove_prefix(colon + 1);
    }
}

}
