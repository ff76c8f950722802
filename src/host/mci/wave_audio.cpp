#include "host/mci/wave_audio.h"

#include "base/red_book.h"
#include "base/text.h"
#include "host/mci/command_words.h"

#include <array>

namespace tonquay::host {

namespace {

using Mci = platform::Mci;
using Words = std::vector<std::wstring>;

constexpr std::size_t behindName = 2;

struct FormatWord {
    std::wstring_view word;
    std::int32_t number;
};

constexpr std::array format{FormatWord{L"samplespersec", base::red_book::samplesPerSecond},
                            FormatWord{L"channels", base::red_book::channels},
                            FormatWord{L"bitspersample", base::red_book::bitsPerSample},
                            FormatWord{L"alignment", base::red_book::bytesPerSample},
                            FormatWord{L"bytespersec", static_cast<std::int32_t>(base::red_book::bytesPerSecond)}};

}

MciAnswer WaveAudio::carryOut(const Words& words)
{
    const std::wstring verb = base::upper(words.front());
    if (verb == L"SET")
        return set(words);
    if (verb == L"RECORD" && wordsAre(words, behindName, L"overwrite"))
        return record();
    if (verb == L"STOP" && wordsAre(words, behindName, L"")) {
        stop();
        return {};
    }
    if (verb == L"SAVE" && words.size() == behindName)
        return {Mci::missingWord};
    if (verb == L"SAVE" && wordsAre(words, behindName, L"*"))
        return save(words.back());
    return {Mci::unknownCommand};
}

MciAnswer WaveAudio::set(const Words& words)
{
    for (std::size_t i = behindName; i < words.size(); i += 2) {
        const auto known =
            std::ranges::find_if(format, [&](const FormatWord& entry) { return base::sameText(entry.word, words[i]); });
        if (known == format.end())
            return {Mci::unknownCommand};
        if (i + 1 == words.size())
            return {Mci::missingWord};
        const auto number = wholeNumber(words[i + 1]);
        if (!number)
            return {Mci::badNumber};
        if (*number != known->number)
            return {Mci::formatNotRecorded};
    }
    return {words.size() > behindName ? 0 : std::uint32_t{Mci::missingWord}};
}

MciAnswer WaveAudio::record()
{
    stop();
    recording_.reset();
    auto recording = Recording::start(s_.folder);
    if (!recording) {
        s_.log.line(Mci::troubleArea, base::describe(recording.failure()));
        return {Mci::fileNotSaved};
    }
    recording_ = std::move(*recording);
    // Where nothing is heard there is nothing to capture. And a device that is open already has the track from its
    // first sample on.
    const bool heard = s_.player.prepareSound();
    if (heard)
        input_ = SoundInput::open(recording_->inlet());
    if (input_) {
        s_.log.line(Mci::sourceArea, "recorded from the system's capture device (" + input_->driver() + ")");
        return {};
    }
    const std::string why = heard ? SoundSystem::error() : "there is no sound device";
    s_.log.line(Mci::sourceArea, "recorded what was played, since there is no capture device" +
                                     (why.empty() ? std::string() : " (" + why + ")"));
    s_.player.setTap(recording_->inlet());
    return {};
}

void WaveAudio::stop()
{
    if (!recording_)
        return;
    const std::int64_t unheard = input_ ? 0 : s_.player.endTap();
    if (input_ && (!input_->isAlive() || s_.player.isUnheard()))
        s_.log.line(Mci::troubleArea, "the sound device went away while it was recorded from");
    input_.reset();
    if (const auto ended = recording_->end(unheard); !ended)
        s_.log.line(Mci::troubleArea, base::describe(ended.failure()));
}

MciAnswer WaveAudio::save(std::wstring_view path)
{
    stop();
    if (!recording_)
        return {Mci::fileNotSaved};
    if (const auto saved = recording_->save(s_.files, path); !saved) {
        s_.log.line(Mci::troubleArea, base::describe(saved.failure()));
        return {Mci::fileNotSaved};
    }
    s_.log.line(Mci::savedArea, s_.files.hostPath(path));
    return {};
}

}
