#include "console/rip_arguments.h"

#include "console/option_readers.h"
#include "console/track_list.h"
#include "encode/bitrates.h"

#include <fmt/ranges.h>

namespace tonquay::console {

namespace {

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

}

void declareRip(CLI::App& app, RipOptions& rip)
{
    addPath(app, "-o,--output", "DIR",
            "Output folder, made if missing; without it the saved one, else the music folder", rip.output);
    addOption(app, "-t,--tracks", "LIST", "Tracks, as 1,3-5,8- (all audio tracks without)",
              [&rip](const std::string& text) {
                  const base::Result<TrackList> list = TrackList::parse(text);
                  if (!list)
                      return list.failure().text;
                  rip.tracks = *list;
                  return std::string{};
              });
    addChoice<Format>(app, "-f,--format", "FORMAT", "Format of the files; without it the saved one, else mp3", formats,
                      [&rip](Format value) { rip.format = value; });
    addChoice<Names>(app, "-n,--names", "FORM", "Form of the file names; without it the saved one", nameForms,
                     [&rip](Names value) { rip.names = value; });
    addChoice<Folders>(app, "-d,--folders", "FORM", "Folders below the output folder; without it the saved setting",
                       folderForms, [&rip](Folders value) { rip.folders = value; });
    addChoice<Schedule>(app, "-s,--schedule", "WHEN", "When tracks are encoded; without it the saved setting",
                        schedules, [&rip](Schedule value) { rip.schedule = value; });
    addOption(app, "-b,--bitrate", "KBPS",
              "Bitrate of mp3 and wma, or the quality 0 to 10 of ogg; without it the saved one",
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
    addChoice<Method>(app, "--method", "M", "How the disc is read; digital2 without it", methods,
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

std::string_view formatName(Format format)
{
    return std::find_if(formats.begin(), formats.end(), [format](const auto& w) { return w.value == format; })->text;
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

}
