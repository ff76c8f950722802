#include "console/bar_view.h"

#include "console/play_time.h"
#include "console/rip_lines.h"
#include "console/screen_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace tonquay::console {

namespace {

constexpr Seconds betweenDraws{0.1};
constexpr std::string_view eraseToEnd = "\x1b[J";
constexpr std::string_view backToFirstLine = "\r\x1b[2A";

double part(double value)
{
    // Also takes what is no number for nothing done.
    return value > 0 ? std::min(value, 1.0) : 0.0;
}

std::string bar(double done, int columns)
{
    std::string text;
    const auto full = static_cast<int>(part(done) * columns);
    for (int i = 0; i < columns; ++i)
        text += i < full ? "█" : "░";
    return text;
}

/// Caption, bar, percentage and a remark. The bar takes what the others leave; where that is too little it goes, and
/// then the remark's end.
std::string barLine(std::string_view caption, double done, const std::string& remark, int columns)
{
    constexpr int leastBar = 8;
    constexpr int mostBar = 50;
    const std::string head = fmt::format("{:<6}", caption);
    const std::string tail = fmt::format(" {:>3} %  {}", static_cast<int>(part(done) * 100), remark);
    const int left = columns - columnsOf(head) - columnsOf(tail);
    const std::string middle = left >= leastBar ? bar(done, std::min(left, mostBar)) : std::string{};
    return fitted(head + middle + tail, columns);
}

std::string remaining(const RunProgress& progress)
{
    // A guess from less than this says nothing.
    constexpr double leastPart = 0.01;
    constexpr Seconds leastTime{1};
    const double done = part(progress.totalPart);
    if (done < leastPart || progress.elapsed < leastTime)
        return "-:--";
    return clockText(std::lround(progress.elapsed.count() * (1 - done) / done));
}

}

void BarView::runBegins(const RunFacts& run)
{
    run_ = run;
    screen_.write(
        fitted(fmt::format("{} {} to {}", run.tracks, run.tracks == 1 ? "track" : "tracks", shownBytes(run.folder)),
               screen_.columns() - 1) +
        '\n');
}

void BarView::trackBegins(const TrackFacts& track)
{
    track_ = track;
    progress_.trackPart = 0;
    progress_.activity = RunProgress::Activity::recording;
    draw();
}

void BarView::encodingBegins(const TrackFacts& track)
{
    track_ = track;
    progress_.activity = RunProgress::Activity::encoding;
    draw();
}

void BarView::progress(const RunProgress& progress)
{
    const bool news = progress.activity != progress_.activity;
    progress_ = progress;
    if (news || progress.elapsed >= nextDraw_)
        draw();
}

void BarView::trackEnds(const TrackVerdict& verdict)
{
    erase();
    screen_.write(verdictLine(verdict) + '\n');
    static_cast<void>(screen_.flush());
    if (!verdict.whole)
        screen_.complain(problemLine(verdict));
}

void BarView::trackIsLeftOut(const TrackVerdict& track)
{
    screen_.complain(problemLine(track));
}

void BarView::runEnds(const RunEnd& end)
{
    erase();
    screen_.write(summaryLine(end) + '\n');
    static_cast<void>(screen_.flush());
}

void BarView::draw()
{
    nextDraw_ = progress_.elapsed + betweenDraws;
    if (!track_)
        return;
    // The last column stays free: some terminals wrap as soon as it is written.
    const int columns = std::max(1, screen_.columns() - 1);
    const bool recording = progress_.activity == RunProgress::Activity::recording;
    const std::string head = fmt::format("{}  track {} ({} of {})  {}", recording ? "Recording" : "Encoding",
                                         track_->number, track_->ordinal, run_.tracks, shown(track_->title));
    const auto played = static_cast<std::int64_t>(part(progress_.trackPart) * track_->playSeconds);
    const std::string trackRemark =
        fmt::format("{} / {}  {}", clockText(played), clockText(std::lround(track_->playSeconds)),
                    speedText(progress_.playSecondsRead, progress_.elapsed));
    const std::string totalRemark = fmt::format(
        "{} gone, {} to go", clockText(static_cast<std::int64_t>(progress_.elapsed.count())), remaining(progress_));
    erase();
    screen_.write(fitted(head, columns) + '\n' + barLine("Track", progress_.trackPart, trackRemark, columns) + '\n' +
                  barLine("Total", progress_.totalPart, totalRemark, columns));
    static_cast<void>(screen_.flush());
    drawn_ = true;
}

void BarView::erase()
{
    if (!drawn_)
        return;
    screen_.write(backToFirstLine);
    screen_.write(eraseToEnd);
    drawn_ = false;
}

}
