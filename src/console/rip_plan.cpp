#include "console/rip_plan.h"

#include "console/wav_verdict.h"
#include "naming/file_name.h"
#include "naming/nonasc.h"
#include "naming/output_folder.h"

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
