#include "encode/switches.h"

#include "base/numbers.h"
#include "base/text.h"
#include "encode/bitrates.h"
#include "naming/output_folder.h"

#include <array>
#include <span>

namespace tonquay::encode {

namespace {

/// One switch or file argument: its text, leading blank included, when it is given, and the value behind it, if any.
struct Switch {
    std::wstring_view text;
    bool (*wanted)(const Job&);
    std::wstring (*value)(const Job&) = nullptr;
};

// When a switch is given.

constexpr auto always = [](const Job&) { return true; };
constexpr auto inSingle = [](const Job& job) { return job.schedule == Schedule::single; };
constexpr auto crcCheck = [](const Job& job) { return job.settings.crcCheck == 1; };
constexpr auto highPriority = [](const Job& job) { return job.settings.highPriority == 1; };
constexpr auto mono = [](const Job& job) { return job.settings.stereo == 0; };
constexpr auto hasBitrate = [](const Job& job) { return bitsPerSecond(job.settings.bitrateIndex).has_value(); };
constexpr auto namesLame = [](const Job& job) { return pathNames(job.settings.encoderPath, L"LAME"); };

constexpr auto hasTitle = [](const Job& job) { return !base::isBlank(job.disc.trackTitles(job.number)); };
constexpr auto hasArtist = [](const Job& job) { return !base::isBlank(job.disc.discArtist); };
constexpr auto hasAlbum = [](const Job& job) { return !base::isBlank(job.disc.discAlbum); };
constexpr auto hasYear = [](const Job& job) { return base::val(job.disc.discYear) != 0; };
constexpr auto hasGenre = [](const Job& job) { return !base::isBlank(job.disc.discGenre); };
constexpr auto hasComment = [](const Job& job) { return !base::isBlank(job.disc.discComment); };

// What stands behind it.

std::wstring quoted(std::wstring_view text)
{
    return L'"' + std::wstring(text) + L'"';
}

std::wstring trimQuoted(std::wstring_view text)
{
    return quoted(base::trim(text));
}

constexpr auto bps = [](const Job& job) { return base::digits(bitsPerSecond(job.settings.bitrateIndex).value_or(0)); };
constexpr auto kbps = [](const Job& job) {
    return base::digits(bitsPerSecond(job.settings.bitrateIndex).value_or(0) / 1000);
};

constexpr auto title = [](const Job& job) { return trimQuoted(job.disc.trackTitles(job.number)); };
constexpr auto artist = [](const Job& job) { return trimQuoted(job.disc.discArtist); };
constexpr auto album = [](const Job& job) { return trimQuoted(job.disc.discAlbum); };
constexpr auto year = [](const Job& job) { return trimQuoted(job.disc.discYear); };
constexpr auto genre = [](const Job& job) { return trimQuoted(job.disc.discGenre); };
constexpr auto comment = [](const Job& job) { return trimQuoted(job.disc.discComment); };
constexpr auto trackNumber = [](const Job& job) { return base::digits(job.number); };

constexpr auto wavPath = [](const Job& job) {
    return quoted(naming::joined(job.run.destFolder, job.run.currentName + L".wav"));
};
constexpr auto mp3Path = [](const Job& job) {
    return quoted(naming::joined(job.run.destFolder, job.run.currentName + L".mp3"));
};

/// A batch runs in the folder of its files.
constexpr auto wavPathOrBareWav = [](const Job& job) {
    return inSingle(job) ? wavPath(job) : quoted(job.run.currentName + L".wav");
};

// The tables, each in the order of the command.

constexpr std::array own{
    Switch{L" ", always, [](const Job& job) { return std::wstring(base::trim(job.settings.encoderCmdLine)); }},
    Switch{L" ", always, wavPathOrBareWav},
    Switch{L" ", namesLame, mp3Path},
};

constexpr std::array lame{
    Switch{L" -p", crcCheck},
    // This encoder knows no priority; the setting is how variable bitrate is asked for. The number brings its blank.
    Switch{L" -V", highPriority, [](const Job& job) { return base::str(job.settings.vbrQuality); }},
    Switch{L" -a", mono},
    Switch{L" -h", always},
    Switch{L" -b ", hasBitrate, kbps},
    Switch{L" ", always, wavPath},
    Switch{L" ", always, mp3Path},
};

bool bladeDeletes(const Job& job)
{
    // Under Turbo the WAV files of the tracks are left for the sweep after the last one.
    return job.settings.deleteWav == 1 && !(inSingle(job) && job.settings.turboMode == 1);
}

/// 128 kbps is what this encoder takes without a word.
constexpr auto bladeNeedsBitrate = [](const Job& job) {
    return hasBitrate(job) && bitsPerSecond(job.settings.bitrateIndex) != 128000;
};
constexpr auto batchThatKeeps = [](const Job& job) { return !inSingle(job) && job.settings.deleteWav != 1; };
constexpr auto batchThatDeletes = [](const Job& job) { return !inSingle(job) && job.settings.deleteWav == 1; };

constexpr std::array blade{
    Switch{L" -delete", bladeDeletes},
    Switch{L" -crc", crcCheck},
    Switch{L" -prio=highest", highPriority},
    Switch{L" -mono", mono},
    Switch{L" -", bladeNeedsBitrate, kbps},
    Switch{L" -quit", always},
    Switch{L" ", inSingle, wavPath},
    Switch{L"", batchThatKeeps, [](const Job& job) { return std::wstring(job.keptWavList); }},
    Switch{L" *.wav", batchThatDeletes},
    Switch{L" *.", [](const Job& job) { return !base::isBlank(job.settings.encoderFileExt); },
           [](const Job& job) { return std::wstring(base::trim(job.settings.encoderFileExt)); }},
};

// clang-format off
constexpr std::array plugger{
    Switch{L" -c", crcCheck},
    Switch{L" -z", highPriority},
    Switch{L" -dm", mono},
    Switch{L" -b ", hasBitrate, kbps},
    Switch{L" ", always, wavPath},
};
// clang-format on

/// Its batch joins folder and name without a backslash, so it finds its input only where the folder ends in one.
constexpr auto mp3encInput = [](const Job& job) {
    return inSingle(job) ? wavPath(job) : quoted(job.run.destFolder + job.run.currentName + L".wav");
};

/// Its output has one, at a drive root too.
constexpr auto mp3encOutput = [](const Job& job) {
    return quoted(job.run.destFolder + L'\\' + job.run.currentName + L".mp3");
};

constexpr std::array mp3enc{
    Switch{L" -v", always},
    Switch{L" -crc", crcCheck},
    Switch{L" -dm", mono},
    Switch{L" -br ", hasBitrate, bps},
    Switch{L" -qual 9", always},
    Switch{L" -if ", always, mp3encInput},
    Switch{L" -of ", always, mp3encOutput},
};

/// The index of the rate is the quality here, from 0 to 10; what lies outside is the best.
std::wstring oggQuality(const Job& job)
{
    const std::int16_t index = job.settings.bitrateIndex;
    return index >= 0 && index <= 10 ? base::digits(index) : L"10";
}

// clang-format off
constexpr std::array oggencSingle{
    Switch{L" -q", always, oggQuality},
    Switch{L" -a", hasArtist, artist},
    Switch{L" -l", hasAlbum, album},
    Switch{L" -d", hasYear, year},
    Switch{L" -c=", hasComment, comment},
    Switch{L" -N", always, trackNumber},
    Switch{L" -t", hasTitle, title},
    Switch{L" -G", hasGenre, genre},
    Switch{L" ", always, wavPath},
};

/// What is the disc's comes first here, what is the track's behind it.
constexpr std::array oggencBatch{
    Switch{L" -q", always, oggQuality},
    Switch{L" -a", hasArtist, artist},
    Switch{L" -l", hasAlbum, album},
    Switch{L" -d", hasYear, year},
    Switch{L" -c=", hasComment, comment},
    Switch{L" -G", hasGenre, genre},
    Switch{L" -N", always, trackNumber},
    Switch{L" -t", hasTitle, title},
    Switch{L" ", always, wavPath},
};
// clang-format on

constexpr std::array generic{
    Switch{L" ", always, wavPathOrBareWav},
};

std::span<const Switch> switchesOf(EncoderKind kind, Schedule schedule)
{
    switch (kind) {
    case EncoderKind::lame: return lame;
    case EncoderKind::blade: return blade;
    case EncoderKind::plugger: return plugger;
    case EncoderKind::mp3enc: return mp3enc;
    case EncoderKind::xing: return {};
    case EncoderKind::oggenc: return schedule == Schedule::single ? std::span<const Switch>(oggencSingle) : oggencBatch;
    case EncoderKind::generic: break;
    }
    return generic;
}

std::wstring textOf(std::span<const Switch> switches, const Job& job)
{
    std::wstring text;
    for (const Switch& entry : switches) {
        if (!entry.wanted(job))
            continue;
        text += entry.text;
        if (entry.value != nullptr)
            text += entry.value(job);
    }
    return text;
}

}

std::wstring builtArguments(EncoderKind kind, const Job& job)
{
    return textOf(switchesOf(kind, job.schedule), job);
}

std::wstring ownArguments(const Job& job)
{
    return textOf(own, job);
}

}
