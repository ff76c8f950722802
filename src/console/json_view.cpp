#include "console/json_view.h"

#include "console/rip_lines.h"
#include "console/screen_text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace tonquay::console {

namespace {

using Json = nlohmann::ordered_json;

constexpr Seconds betweenProgress{0.25};

void line(Screen& screen, const Json& json)
{
    screen.write(json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n');
    static_cast<void>(screen.flush());
}

/// Thousandths are enough for people and keep the lines short.
double rounded(double value)
{
    return std::round(value * 1000) / 1000;
}

Json speed(double playSeconds, Seconds taken)
{
    if (taken.count() <= 0)
        return nullptr;
    return rounded(playSeconds / taken.count());
}

}

void JsonView::runBegins(const RunFacts& run)
{
    line(screen_, Json{{"event", "run"},
                       {"tracks", run.tracks},
                       {"seconds", rounded(run.playSeconds)},
                       {"folder", jsonBytes(run.folder)},
                       {"format", jsonBytes(run.format)}});
}

void JsonView::trackBegins(const TrackFacts& track)
{
    track_ = track.number;
    nextProgress_ = Seconds{0};
    line(screen_, Json{{"event", "track"},
                       {"number", track.number},
                       {"ordinal", track.ordinal},
                       {"title", jsonText(track.title)},
                       {"path", jsonBytes(track.path)},
                       {"seconds", rounded(track.playSeconds)}});
}

void JsonView::progress(const RunProgress& progress)
{
    if (progress_ == Progress::hidden || progress.elapsed < nextProgress_)
        return;
    nextProgress_ = progress.elapsed + betweenProgress;
    const bool recording = progress.activity == RunProgress::Activity::recording;
    line(screen_, Json{{"event", "progress"},
                       {"number", track_},
                       {"activity", recording ? "recording" : "encoding"},
                       {"track", rounded(progress.trackPart)},
                       {"total", rounded(progress.totalPart)},
                       {"elapsed", rounded(progress.elapsed.count())},
                       {"speed", speed(progress.playSecondsRead, progress.elapsed)}});
}

void JsonView::trackEnds(const TrackVerdict& verdict)
{
    line(screen_, Json{{"event", "verdict"},
                       {"number", verdict.number},
                       {"path", jsonBytes(verdict.path)},
                       {"seconds", rounded(verdict.playSeconds)},
                       {"taken", rounded(verdict.taken.count())},
                       {"speed", speed(verdict.playSeconds, verdict.taken)},
                       {"crc32", verdict.crc ? Json(fmt::format("{:08X}", *verdict.crc)) : Json(nullptr)},
                       {"whole", verdict.whole},
                       {"reread", verdict.troubles.reread},
                       {"repaired", verdict.troubles.repaired},
                       {"given_up", verdict.troubles.givenUp},
                       {"text", jsonBytes(verdict.text)}});
    if (!verdict.whole)
        screen_.complain(problemLine(verdict));
}

void JsonView::trackIsLeftOut(const TrackVerdict& track)
{
    trackEnds(track);
}

void JsonView::runEnds(const RunEnd& end)
{
    line(screen_, Json{{"event", "end"},
                       {"whole", end.whole},
                       {"broken", end.broken},
                       {"left", end.left},
                       {"seconds", rounded(end.playSeconds)},
                       {"taken", rounded(end.taken.count())},
                       {"speed", speed(end.playSeconds, end.taken)}});
}

}
