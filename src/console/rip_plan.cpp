#include "console/rip_plan.h"

#include "base/red_book.h"
#include "base/text.h"
#include "console/play_time.h"
#include "console/wav_verdict.h"
#include "encode/bitrates.h"
#include "encode/commands.h"
#include "engine/extraction_to_wma.h"
#include "naming/file_name.h"
#include "naming/nonasc.h"
#include "naming/output_folder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <numeric>

namespace tonquay::console {

namespace {

/// The names as the run is going to clean them.
void cleanNames(state::DiscInfo& disc)
{
    disc.discArtist = naming::nonasc(disc.discArtist);
    disc.discAlbum = naming::nonasc(disc.discAlbum);
    for (std::int64_t number = 1; number <= disc.trackCount && state::hasTrackSlot(number); ++number)
        disc.trackTitles.set(number, naming::nonasc(disc.trackTitles(number)));
}

/// An encoder that is not known is taken to make an MP3 file beside the WAV file, as nearly all do.
std::wstring encodedPath(Format format, const state::RipSettings& settings, const state::RunInHand& run)
{
    std::wstring path = encode::encodedPath(settings, run);
    if (path.empty())
        path = naming::joined(run.destFolder, run.currentName + (format == Format::ogg ? L".ogg" : L".mp3"));
    return path;
}

/// Rather too many than too few: for the check of free space.
std::int64_t encodedBytes(Format format, const state::RipSettings& settings, double seconds)
{
    // Nominal bits per second of Ogg Vorbis by quality; MP3 of variable bitrate is bounded by its highest rate.
    constexpr std::array<std::int32_t, 11> oggRates{64000,  80000,  96000,  112000, 128000, 160000,
                                                    192000, 224000, 256000, 320000, 500000};
    constexpr std::int64_t headers = 16384;
    const auto index = static_cast<std::size_t>(settings.bitrateIndex);
    std::int32_t rate = encode::bitrates.back();
    if (format == Format::ogg)
        rate = oggRates[std::min(index, oggRates.size() - 1)];
    else if (format == Format::wma || (settings.highPriority != 1 && !encode::hasOwnSwitches(settings)))
        rate = encode::bitsPerSecond(settings.bitrateIndex).value_or(rate);
    return static_cast<std::int64_t>(seconds * rate / 8) + headers;
}

/// What the reading of a track writes: its WAV file, or the WMA file itself.
const std::string& hostPathOfFirst(const RipPlan& plan, const PlannedTrack& track)
{
    return plan.format == Format::wma ? track.hostPath : track.wavHostPath;
}

PlannedFile firstFile(const RipPlan& plan, const PlannedTrack& track, platform::FileSystem& files)
{
    const bool wma = plan.format == Format::wma;
    const std::wstring& path = wma ? track.path : track.wavPath;
    return {.track = track.track.number,
            .path = path,
            .bytes = wma ? track.encodedBytes : wavFileBytes(track.soundBytes),
            .existing = files.length(path)};
}

}

RipPlan makePlan(Format format, const std::vector<std::size_t>& rows, const platform::DiscTable& table,
                 state::DiscInfo disc, const state::RipSettings& settings, platform::FileSystem& files)
{
    cleanNames(disc);
    state::RunInHand run;
    run.destFolder = naming::outputFolder(settings, disc);
    RipPlan plan{.folder = files.hostPath(run.destFolder), .format = format, .tracks = {}};
    plan.wavsPileUp =
        !usesEncoder(format) || settings.deleteWav != 1 || settings.encodeSingle != 1 || settings.turboMode == 1;
    const bool batch = settings.encodeSingle != 1;
    // Whose WAV files are looked for again by their names, after they were made.
    const bool looksAgain = usesEncoder(format) && (batch || (settings.turboMode == 1 && settings.deleteWav == 1));
    plan.oneByOne = usesEncoder(format) && batch && encode::batchIsUnsafe(settings);
    for (const std::size_t row : rows) {
        PlannedTrack planned;
        planned.row = static_cast<std::int32_t>(row);
        planned.track = table.tracks[row];
        planned.soundBytes = planned.track.sectorCount * base::red_book::bytesPerSector;
        run.currentName = naming::fileName(settings.nameFormat, disc, planned.row + 1, naming::shortestRippedName);
        if (looksAgain && run.currentName !=
                              naming::fileName(settings.nameFormat, disc, planned.row + 1, naming::shortestRebuiltName))
            plan.oneByOne = true;
        planned.wavPath = naming::joined(run.destFolder, run.currentName + L".wav");
        planned.wavHostPath = files.hostPath(planned.wavPath);
        planned.path = planned.wavPath;
        if (format == Format::wma)
            planned.path = engine::wmaPath(planned.wavPath);
        else if (format != Format::wav)
            planned.path = encodedPath(format, settings, run);
        if (format != Format::wav)
            planned.encodedBytes = encodedBytes(format, settings, playSeconds(planned.soundBytes));
        planned.hostPath = files.hostPath(planned.path);
        plan.tracks.push_back(std::move(planned));
    }
    return plan;
}

std::vector<std::string> sourceProblems(const RipPlan& plan, const std::string& image)
{
    // Sheets are small; a large image holds its sound itself and names no other file.
    constexpr std::streamsize mostBytes = 1 << 20;
    std::ifstream file(image, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(mostBytes), '\0');
    file.read(bytes.data(), mostBytes);
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    const std::wstring sheet = base::upper(base::fromFileBytes(bytes));

    std::vector<std::string> problems;
    for (const PlannedTrack& track : plan.tracks) {
        const std::filesystem::path output(hostPathOfFirst(plan, track));
        std::error_code ignored;
        const std::wstring name = base::upper(base::fromHostBytes(output.filename().string()));
        if (std::filesystem::exists(output, ignored) && sheet.find(name) != std::wstring::npos)
            problems.push_back("track " + std::to_string(track.track.number) + ": " + output.string() +
                               " is named by the disc image itself; choose another output folder or other names");
    }
    return problems;
}

std::vector<std::string> problemsOf(const RipPlan& plan, platform::FileSystem& files)
{
    std::vector<PlannedFile> planned;
    planned.reserve(plan.tracks.size());
    for (const PlannedTrack& track : plan.tracks)
        planned.push_back(firstFile(plan, track, files));
    std::vector<std::string> problems = sameFileProblems(planned);
    for (std::string& problem : longNameProblems(planned))
        problems.push_back(std::move(problem));
    if (!problems.empty())
        return problems;

    const auto free = freeBytes(plan.folder);
    if (!free)
        return {base::describe(free.failure())};
    // A WMA file is the first and the only one of its track.
    const bool onTop = plan.format != Format::wma;
    const auto encoded = std::accumulate(plan.tracks.begin(), plan.tracks.end(), std::int64_t{0},
                                         [](std::int64_t sum, const auto& track) { return sum + track.encodedBytes; });
    const std::int64_t first = plan.wavsPileUp ? bytesToCome(planned) : largestToCome(planned);
    if (auto problem = spaceProblem(plan.folder, onTop ? first + encoded : first, *free))
        return {std::move(*problem)};
    if (plan.recordingFolder) {
        const auto room = freeBytes(*plan.recordingFolder);
        if (!room)
            return {base::describe(room.failure())};
        const auto longest = std::ranges::max(planned, {}, &PlannedFile::bytes);
        if (auto problem = spaceProblem(*plan.recordingFolder, longest.bytes, *room,
                                        "recordings lie there; make room or set TMPDIR to another folder"))
            return {std::move(*problem)};
    }
    if (const base::Status made = prepareFolder(plan.folder); !made)
        return {base::describe(made.failure())};
    return {};
}

}
