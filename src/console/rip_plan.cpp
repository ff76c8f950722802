#include "console/rip_plan.h"

#include "base/text.h"
#include "console/wav_verdict.h"
#include "naming/file_name.h"
#include "naming/nonasc.h"
#include "naming/output_folder.h"

#include <filesystem>
#include <fstream>

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

}

RipPlan makePlan(const std::vector<std::size_t>& rows, const platform::DiscTable& table, state::DiscInfo disc,
                 const state::RipSettings& settings, platform::FileSystem& files)
{
    cleanNames(disc);
    const std::wstring folder = naming::outputFolder(settings, disc);
    RipPlan plan{files.hostPath(folder), {}};
    for (const std::size_t row : rows) {
        PlannedTrack planned;
        planned.row = static_cast<std::int32_t>(row);
        planned.track = table.tracks[row];
        const std::wstring name =
            naming::fileName(settings.nameFormat, disc, planned.row + 1, naming::shortestRippedName);
        planned.path = naming::joined(folder, name + L".wav");
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
        const std::filesystem::path output(track.hostPath);
        std::error_code ignored;
        const std::wstring name = base::upper(base::fromHostBytes(output.filename().string()));
        if (std::filesystem::exists(output, ignored) && sheet.find(name) != std::wstring::npos)
            problems.push_back("track " + std::to_string(track.track.number) + ": " + track.hostPath +
                               " is named by the disc image itself; choose another output folder or other names");
    }
    return problems;
}

std::vector<std::string> problemsOf(const RipPlan& plan, platform::FileSystem& files)
{
    std::vector<PlannedFile> planned;
    planned.reserve(plan.tracks.size());
    for (const PlannedTrack& track : plan.tracks)
        planned.push_back({.track = track.track.number,
                           .path = track.path,
                           .bytes = wavFileBytes(sampleBytes(track.track.sectorCount)),
                           .existing = files.length(track.path)});
    std::vector<std::string> problems = sameFileProblems(planned);
    for (std::string& problem : longNameProblems(planned))
        problems.push_back(std::move(problem));
    if (!problems.empty())
        return problems;

    const auto free = freeBytes(plan.folder);
    if (!free)
        return {base::describe(free.failure())};
    if (auto problem = spaceProblem(plan.folder, bytesToCome(planned), *free))
        return {std::move(*problem)};
    if (const base::Status made = prepareFolder(plan.folder); !made)
        return {base::describe(made.failure())};
    return {};
}

}
