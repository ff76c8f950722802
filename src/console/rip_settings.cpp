#include "console/rip_settings.h"

#include "base/text.h"
#include "console/rip_arguments.h"
#include "encode/bitrates.h"
#include "encode/encoder_kind.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace tonquay::console {

namespace {

template <class Choice>
void take(std::int16_t& field, const std::optional<Choice>& choice)
{
    if (choice)
        field = static_cast<std::int16_t>(*choice);
}

void takeSchedule(state::RipSettings& settings, const std::optional<Schedule>& schedule)
{
    if (schedule) {
        settings.encodeSingle = *schedule == Schedule::batch ? 0 : 1;
        settings.turboMode = *schedule == Schedule::turbo ? 1 : 0;
    } else if (settings.encodeSingle != 1) {
        settings.turboMode = 0;
    }
}

void takeBitrate(state::RipSettings& settings, const RipOptions& options, Format format)
{
    // This setting is how the MP3 encoder is asked for a variable bitrate; the rate beside it is the floor then.
    settings.highPriority = options.vbrQuality ? 1 : 0;
    settings.vbrQuality = static_cast<std::int16_t>(options.vbrQuality.value_or(settings.vbrQuality));
    if (options.bitrate)
        settings.bitrateIndex = bitrateIndex(*options.bitrate, format);
    else if (options.vbrQuality)
        settings.bitrateIndex = 0;
}

/// WMA files are made by the audio engine while it reads, so what belongs to an encoder program or to another way of
/// reading has no place.
std::string problemWithWma(const RipOptions& options)
{
    const std::array notThere{
        std::pair{"--schedule", options.schedule.has_value()}, std::pair{"--encoder", options.encoder.has_value()},
        std::pair{"--encoder-options", options.encoderOptions.has_value()}, std::pair{"--keep-wav", options.keepWav}};
    for (const auto& [name, given] : notThere)
        if (given)
            return fmt::format("{}: WMA files are made without an encoder program and without a WAV file", name);
    if (options.method != Method::digital2)
        return "--method: only digital2 makes WMA files; leave it out";
    if (options.program)
        return "--program: a run that makes WMA files writes no program file; use mp3, ogg or wav";
    return {};
}

/// What is wrong with options that each are right by themselves, once the format is known; empty when nothing is.
std::string problemWith(Format format, const RipOptions& options)
{
    const auto firstOf = [](const auto& candidates) -> const char* {
        for (const auto& [name, given] : candidates)
            if (given)
                return name;
        return nullptr;
    };
    if (std::string problem = problemWithWma(options); format == Format::wma && !problem.empty())
        return problem;
    const std::array encodedOnly{std::pair{"--bitrate", options.bitrate.has_value()},
                                 std::pair{"--schedule", options.schedule.has_value()},
                                 std::pair{"--encoder", options.encoder.has_value()},
                                 std::pair{"--encoder-options", options.encoderOptions.has_value()}};
    if (const char* name = firstOf(encodedOnly); name != nullptr && format == Format::wav)
        return fmt::format("{}: WAV files are not encoded; say --format mp3, ogg or wma", name);
    if (options.bitrate && !bitrateFits(*options.bitrate, format))
        return fmt::format("--bitrate: {} does not fit the format {}", *options.bitrate, formatName(format));
    const std::array mp3Only{std::pair{"--vbr", options.vbrQuality.has_value()}, std::pair{"--mono", options.mono},
                             std::pair{"--crc", options.crc}};
    if (const char* name = firstOf(mp3Only); name != nullptr && format != Format::mp3)
        return fmt::format("{}: only --format mp3 has this", name);
    const char* replaced = options.bitrate ? "--bitrate" : firstOf(mp3Only);
    if (options.encoderOptions && replaced != nullptr)
        return fmt::format("{}: --encoder-options stands in its place; say it there", replaced);
    return {};
}

}

Format formatOf(const state::RipSettings& saved, const RipOptions& options)
{
    if (options.format)
        return *options.format;
    if (saved.ripToWma == 1)
        return Format::wma;
    if (encode::pathNames(saved.encoderPath, L"OGG"))
        return Format::ogg;
    return saved.encodeWanted == 1 ? Format::mp3 : Format::wav;
}

base::Result<state::RipSettings> settingsForRun(const state::RipSettings& saved, const RipOptions& options,
                                                const RunPlaces& places)
{
    const Format format = formatOf(saved, options);
    if (std::string problem = problemWith(format, options); !problem.empty())
        return base::Failure{base::Failure::Kind::invalid, "rip", std::move(problem)};

    state::RipSettings settings = saved;
    if (!places.output.empty())
        settings.outputFolder = places.output;
    take(settings.nameFormat, options.names);
    take(settings.dirMode, options.folders);
    settings.ripMethod = static_cast<std::int16_t>(options.method);
    settings.createProgram = options.program ? 1 : 0;
    settings.autoClose = 0;
    settings.autoSelectAll = 0;
    settings.minimizeWhileEncoding = 0;
    settings.ripToWma = format == Format::wma ? 1 : 0;
    settings.encoderPath = places.encoder;
    settings.encoderCmdLine = base::fromHostBytes(options.encoderOptions.value_or(""));
    settings.encoderFileExt.clear();
    settings.encodeWanted = usesEncoder(format) ? 1 : 0;
    settings.deleteWav = usesEncoder(format) && !options.keepWav ? 1 : 0;
    settings.crcCheck = options.crc ? 1 : 0;
    settings.stereo = options.mono ? 0 : 1;
    takeSchedule(settings, options.schedule);
    takeBitrate(settings, options, format);
    if (format == Format::wma && !encode::bitsPerSecond(settings.bitrateIndex))
        return base::Failure{base::Failure::Kind::invalid, "--bitrate",
                             "the saved setting is no rate of WMA files; name one, as --bitrate 128"};
    return settings;
}

}
