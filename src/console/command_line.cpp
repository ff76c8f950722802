#include "console/command_line.h"

#include "base/text.h"
#include "console/screen_text.h"
#include "encode/bitrates.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace tonquay::console {

namespace {

template <class Value>
struct Word {
    std::string_view text;
    Value value;
};
template <class Value>
Word(std::string_view, Value) -> Word<Value>;

constexpr std::array formats{Word{"mp3", Format::mp3}, Word{"ogg", Format::ogg}, Word{"wav", Format::wav},
                             Word{"wma", Format::wma}};
constexpr std::array nameForms{Word{"name", Names::name},
                               Word{"number", Names::number},
                               Word{"artist", Names::artist},
                               Word{"album", Names::album},
                               Word{"artist-album", Names::artistAlbum},
                               Word{"artist-name", Names::artistName},
                               Word{"number-name", Names::numberName}};
constexpr std::array folderForms{Word{"none", Folders::none}, Word{"artist", Folders::artist},
                                 Word{"album", Folders::album}};
constexpr std::array schedules{Word{"batch", Schedule::batch}, Word{"single", Schedule::single},
                               Word{"turbo", Schedule::turbo}};
constexpr std::array methods{Word{"digital2", Method::digital2}, Word{"normal", Method::normal},
                             Word{"synchronous", Method::synchronous}, Word{"burst", Method::burst},
                             Word{"analog", Method::analog}};
constexpr auto rates = [] {
    std::array<int, encode::bitrates.size()> kbps{};
    std::transform(encode::bitrates.begin(), encode::bitrates.end(), kbps.begin(), [](int bps) { return bps / 1000; });
    return kbps;
}();
constexpr int bestOggQuality = 10;

constexpr std::string_view notYet = "not available yet in this version";
constexpr const char* discHelp =
    "A drive (/dev/sr0), an image (.cue, .toc, .nrg) or a drive letter; without it the first drive with an audio disc";

template <class Words>
std::string listed(const Words& words)
{
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : ", ") + std::string(word.text);
    return text;
}

template <class Value, std::size_t size>
std::optional<Value> find(const std::array<Word<Value>, size>& words, std::string_view text)
{
    const auto word = std::find_if(words.begin(), words.end(), [text](const auto& w) { return w.text == text; });
    if (word == words.end())
        return std::nullopt;
    return word->value;
}

std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::optional<int> minutesAndSeconds(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || text.size() - colon != 3 || colon == 0 || colon > 3)
        return std::nullopt;
    const std::optional<int> minutes = wholeNumber(text.substr(0, colon));
    const std::optional<int> seconds = wholeNumber(text.substr(colon + 1));
    if (!minutes || !seconds || *minutes < 0 || *seconds < 0 || *seconds > 59)
        return std::nullopt;
    return *minutes * 60 + *seconds;
}

/// An option whose text `take` accepts or answers with what is wrong with it.
void addOption(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
               std::function<std::string(const std::string&)> take)
{
    app.add_option_function<std::string>(
           name,
           [name, take = std::move(take)](const std::string& text) {
               const std::string problem = take(text);
               if (!problem.empty())
                   throw CLI::ValidationError(name.substr(name.find("--")), problem);
           },
           help)
        ->type_name(value);
}

template <class Value, std::size_t size>
void addChoice(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
               const std::array<Word<Value>, size>& words, std::function<void(Value)> store)
{
    addOption(app, name, value, help + " (" + listed(words) + ")", [&words, store](const std::string& text) {
        const std::optional<Value> found = find(words, text);
        if (!found)
            return fmt::format("\"{}\" is none of {}", shownBytes(text), listed(words));
        store(*found);
        return std::string{};
    });
}

void addNumber(CLI::App& app, const std::string& name, const std::string& value, const std::string& help, int least,
               int most, std::optional<int>& number)
{
    addOption(app, name, value, help, [least, most, &number](const std::string& text) {
        number = wholeNumber(text);
        const bool good = number && *number >= least && *number <= most;
        return good ? std::string{}
                    : fmt::format("\"{}\" is no whole number from {} to {}", shownBytes(text), least, most);
    });
}

void addTime(CLI::App& app, const std::string& name, const std::string& help, std::optional<int>& seconds)
{
    addOption(app, name, "M:SS", help, [&seconds](const std::string& text) {
        seconds = minutesAndSeconds(text);
        return seconds ? std::string{} : fmt::format("\"{}\" is no time like 1:30", shownBytes(text));
    });
}

void addPath(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
             std::optional<std::string>& path)
{
    addOption(app, name, value, help, [&path](const std::string& text) {
        path = text;
        return text.empty() ? "an empty text" : std::string{};
    });
}

void addName(CLI::App& app, const std::string& name, const std::string& help, std::optional<std::wstring>& text)
{
    addOption(app, name, "TEXT", help, [&text](const std::string& given) {
        text = base::fromHostBytes(given);
        return std::string{};
    });
}

void addTitles(CLI::App& app, std::map<int, std::wstring>& titles)
{
    app.add_option_function<std::vector<std::string>>(
           "--title",
           [&titles](const std::vector<std::string>& given) {
               for (const std::string& text : given) {
                   const std::size_t equals = text.find('=');
                   const std::optional<int> number = wholeNumber(std::string_view(text).substr(0, equals));
                   if (equals == std::string::npos || !number || *number < 1 || *number > 99)
                       throw CLI::ValidationError(
                           "--title", fmt::format("\"{}\" is no track number and title like 3=Rain", shownBytes(text)));
                   titles[*number] = base::fromHostBytes(std::string_view(text).substr(equals + 1));
               }
           },
           "Title of a track; may be repeated")
        ->type_name("N=TEXT")
        ->expected(1)
        // Else every word that follows, the disc too, would be taken for a further title.
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void declareRip(CLI::App& app, RipOptions& rip)
{
    addPath(app, "-o,--output", "DIR", "Output folder, made if missing", rip.output);
    addOption(app, "-t,--tracks", "LIST", "Tracks, as 1,3-5,8- (all audio tracks without)",
              [&rip](const std::string& text) {
                  const base::Result<TrackList> list = TrackList::parse(text);
                  if (!list)
                      return list.failure().text;
                  rip.tracks = *list;
                  return std::string{};
              });
    addChoice<Format>(app, "-f,--format", "FORMAT", "Format of the files", formats,
                      [&rip](Format value) { rip.format = value; });
    addChoice<Names>(app, "-n,--names", "FORM", "Form of the file names", nameForms,
                     [&rip](Names value) { rip.names = value; });
    addChoice<Folders>(app, "-d,--folders", "FORM", "Folders below the output folder", folderForms,
                       [&rip](Folders value) { rip.folders = value; });
    addChoice<Schedule>(app, "-s,--schedule", "WHEN", "When tracks are encoded", schedules,
                        [&rip](Schedule value) { rip.schedule = value; });
    addOption(app, "-b,--bitrate", "KBPS", "Bitrate of mp3 and wma, or the quality 0 to 10 of ogg",
              [&rip](const std::string& text) {
                  rip.bitrate = wholeNumber(text);
                  const bool good =
                      rip.bitrate && (bitrateFits(*rip.bitrate, Format::mp3) || bitrateFits(*rip.bitrate, Format::ogg));
                  return good ? std::string{}
                              : fmt::format("\"{}\" is none of {}, nor a quality from 0 to {}", shownBytes(text),
                                            fmt::join(rates, ", "), bestOggQuality);
              });
    addNumber(app, "--vbr", "Q", "Variable bitrate, quality 0 (best) to 9", 0, 9, rip.vbrQuality);
    app.add_flag("--mono", rip.mono, "Encode in mono");
    app.add_flag("--crc", rip.crc, "Have the encoder add checksums");
    app.add_flag("--keep-wav", rip.keepWav, "Keep the WAV file beside the encoded one");
    addPath(app, "--encoder", "PATH", "Encoder program", rip.encoder);
    addPath(app, "--encoder-options", "TEXT", "Switches of your own in place of the built ones", rip.encoderOptions);
    addChoice<Method>(app, "--method", "M", "How the disc is read", methods,
                      [&rip](Method value) { rip.method = value; });
    addTime(app, "--from", "Start of a part of one track", rip.fromSeconds);
    addTime(app, "--to", "End of a part of one track", rip.toSeconds);
    addName(app, "--artist", "Artist in place of the disc's", rip.given.artist);
    addName(app, "--album", "Album", rip.given.album);
    addName(app, "--year", "Year", rip.given.year);
    addName(app, "--genre", "Genre", rip.given.genre);
    addName(app, "--comment", "Comment", rip.given.comment);
    addTitles(app, rip.given.titles);
    app.add_flag("--program", rip.program, "Write the .pg1 program file");
    app.add_flag("--json", rip.json, "One JSON object a line");
    app.add_flag("-q,--quiet", rip.quiet, "No progress");
    app.add_flag("-v,--verbose", rip.verbose, "Show every diagnostic line");
    app.add_option("DISC", rip.disc, discHelp);
}

/// What is wrong with options that are each right by themselves, or not there yet; empty when they can be carried out.
std::string problemOf(const RipOptions& rip)
{
    if (rip.format && !whyNotAvailable(*rip.format).empty())
        return whyNotAvailable(*rip.format);
    if (rip.method == Method::analog)
        return fmt::format("--method: this way of reading is {}; leave it out for digital2", notYet);
    return {};
}

base::Failure wrong(std::string text)
{
    return {base::Failure::Kind::invalid, {}, std::move(text)};
}

}

std::string_view formatName(Format format)
{
    return std::find_if(formats.begin(), formats.end(), [format](const auto& w) { return w.value == format; })->text;
}

std::string whyNotAvailable(Format format)
{
    if (format != Format::wma)
        return {};
    return fmt::format("--format: {} is {}; use mp3, ogg or wav", formatName(format), notYet);
}

bool bitrateFits(int bitrate, Format format)
{
    if (format == Format::ogg)
        return bitrate >= 0 && bitrate <= bestOggQuality;
    return std::find(rates.begin(), rates.end(), bitrate) != rates.end();
}

std::int16_t bitrateIndex(int bitrate, Format format)
{
    if (format == Format::ogg)
        return static_cast<std::int16_t>(bitrate);
    return static_cast<std::int16_t>(std::find(rates.begin(), rates.end(), bitrate) - rates.begin());
}

base::Result<Command> parseCommandLine(const std::vector<std::string>& arguments)
{
    RipOptions rip;
    ListOptions list;
    DrivesOptions drives;
    ToWavOptions toWav;

    CLI::App app("Rips audio discs to files.", "tonquay");
    app.set_version_flag("--version", "tonquay " TONQUAY_VERSION);
    app.require_subcommand(1);

    CLI::App* ripCommand = app.add_subcommand("rip", "Rip tracks to files");
    declareRip(*ripCommand, rip);
    CLI::App* listCommand = app.add_subcommand("list", "Show the disc's tracks: number, time, size, title");
    listCommand->add_flag("--json", list.json, "One JSON document");
    listCommand->add_option("DISC", list.disc, discHelp);
    CLI::App* drivesCommand = app.add_subcommand("drives", "Show the drives and what they can do");
    drivesCommand->add_flag("--json", drives.json, "One JSON document");
    CLI::App* toWavCommand = app.add_subcommand("towav", "Decode MP3 files to WAV files beside them");
    toWavCommand->add_option("FILE", toWav.files, "MP3 files; a WAV file of the same name is replaced")->required();
    CLI::App* later = app.add_subcommand("tags", fmt::format("Show or change tags ({})", notYet));
    later->prefix_command();
    later->set_help_flag();

    try {
        // The parser takes its arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        return Command{Answer{app.help()}};
    } catch (const CLI::CallForVersion& version) {
        return Command{Answer{std::string(version.what()) + '\n'}};
    } catch (const CLI::RequiredError&) {
        if (toWavCommand->parsed())
            return wrong("towav: name one MP3 file at least");
        const std::string unknown = arguments.empty() || arguments.front().starts_with('-')
                                        ? std::string("name a command")
                                        : fmt::format("\"{}\" is no command", shownBytes(arguments.front()));
        return wrong(unknown + ": rip, list, drives, tags, towav; 'tonquay --help' tells more");
    } catch (const CLI::Error& error) {
        return wrong(shownBytes(error.what()));
    }

    if (drivesCommand->parsed())
        return Command{drives};
    if (toWavCommand->parsed())
        return Command{toWav};
    if (listCommand->parsed())
        return Command{list};
    if (!ripCommand->parsed())
        return wrong(fmt::format("{}: {}", app.get_subcommands().front()->get_name(), notYet));
    const std::string problem = problemOf(rip);
    if (!problem.empty())
        return wrong(problem);
    return Command{rip};
}

}
