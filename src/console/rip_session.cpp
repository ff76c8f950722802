#include "console/rip_session.h"

#include "base/numbers.h"
#include "base/text.h"
#include "console/exit_status.h"
#include "console/judged_file.h"
#include "console/rip_arguments.h"
#include "console/run_host.h"
#include "console/run_processes.h"

#include <algorithm>

namespace tonquay::console {

RipSession::RipSession(app::Program& program, platform::Platform platform, RunProcesses& processes, RunHost& host,
                       RipView& view, RipPlan plan)
    : program_(program),
      platform_(platform),
      processes_(processes),
      host_(host),
      view_(view),
      plan_(std::move(plan)),
      records_(plan_.tracks.size()),
      judge_(program_, platform_, processes_, host_, plan_, records_)
{
    for (const PlannedTrack& track : plan_.tracks)
        playSecondsTotal_ += playSeconds(track.soundBytes);
}

RunEnd RipSession::run()
{
    constexpr std::chrono::milliseconds progressInterval{200};
    state::RipdeckControls& main = program_.forms().ripdeck();
    started_ = platform_.clock.now();
    judge_.runBegins();
    view_.runBegins({.tracks = static_cast<int>(plan_.tracks.size()),
                     .playSeconds = playSecondsTotal_,
                     .folder = plan_.folder,
                     .format = std::string(formatName(plan_.format))});
    for (const PlannedTrack& track : plan_.tracks)
        main.list1.select(track.row, true);

    const auto number = main.Label8.caption.follow(
        [this](const std::wstring& text) { trackBegins(static_cast<std::int32_t>(base::val(text))); });
    // The WAV file may be gone when its encoder has ended.
    const auto status = main.Label6[state::statusLabel].caption.follow([this](const std::wstring& text) {
        lookAtEncoders();
        if (text != L"Encoding")
            return;
        if (inHand_)
            judge_.judgeWritten(*inHand_);
        if (program_.state().settings.encodeSingle != 1)
            trackLeavesHand();
    });
    program_.followEncoders([this](const encode::StartedEncoder& encoder) { encoderStarted(encoder); });
    processes_.followEnds([this](platform::Processes::Child child) { judge_.encoderEnded(child); });
    const auto ticking = platform_.loop.every(progressInterval, [this] {
        lookAtEncoders();
        showProgress();
    });
    main.icntla[state::startButton].mouseDown(controls::MouseButton::left);
    main.icntla[state::startButton].mouseUp(controls::MouseButton::left);
    trackLeavesHand();
    showRestOfEncoders();
    platform::waitUntil(platform_.loop, [this] { return processes_.allEnded() && !program_.lateTags().pending(); });
    encodingNow_.reset();
    judge_.setGenres();
    program_.followEncoders({});
    processes_.followEnds({});
    tellRest();
    end_.taken = elapsed();
    view_.runEnds(end_);
    return end_;
}

void RipSession::trackBegins(std::int32_t number)
{
    // The display goes back to 0 at the end of the run, and at once when it is stopped: neither begins a track.
    const auto planned = std::ranges::find(plan_.tracks, number - 1, &PlannedTrack::row);
    if (planned == plan_.tracks.end())
        return;
    trackLeavesHand();
    inHand_ = static_cast<std::size_t>(planned - plan_.tracks.begin());
    records_[*inHand_].begun = true;
    trackStarted_ = platform_.clock.now();
    view_.trackBegins(factsOf(*inHand_, static_cast<int>(std::ranges::count(records_, true, &TrackRecord::begun))));
}

void RipSession::trackLeavesHand()
{
    if (!inHand_)
        return;
    const std::size_t planned = *inHand_;
    judge_.judgeWritten(planned);
    records_[planned].taken = platform_.clock.now() - trackStarted_;
    playSecondsDone_ += playSeconds(plan_.tracks[planned].soundBytes);
    inHand_.reset();
    if (!judge_.encodes())
        tell(planned, judge_.verdictOn(planned));
}

void RipSession::encoderStarted(const encode::StartedEncoder& encoder)
{
    const auto planned = std::ranges::find(plan_.tracks, encoder.row, &PlannedTrack::row);
    if (planned == plan_.tracks.end())
        return;
    const auto index = static_cast<std::size_t>(planned - plan_.tracks.begin());
    records_[index].encoder = encoder.child;
    if (inHand_)
        return;
    encodingNow_ = index;
    view_.encodingBegins(factsOf(index, static_cast<int>(encodersStarted())));
}

/// Those in the background are asked for by nobody else before their files are tagged.
void RipSession::lookAtEncoders()
{
    static_cast<void>(processes_.allEnded());
}

/// What is waited for under Turbo when the run is over.
void RipSession::showRestOfEncoders()
{
    for (std::size_t i = records_.size(); i-- > 0;) {
        if (!records_[i].encoder || processes_.exitCode(*records_[i].encoder))
            continue;
        encodingNow_ = i;
        view_.encodingBegins(factsOf(i, static_cast<int>(i) + 1));
        return;
    }
}

std::ptrdiff_t RipSession::encodersStarted() const
{
    return std::ranges::count_if(records_, [](const TrackRecord& record) { return record.encoder.has_value(); });
}

TrackFacts RipSession::factsOf(std::size_t planned, int ordinal) const
{
    const PlannedTrack& track = plan_.tracks[planned];
    return {.number = track.track.number,
            .ordinal = ordinal,
            .title = program_.state().disc.trackTitles(track.row + 1),
            .path = track.hostPath,
            .playSeconds = playSeconds(plan_.tracks[planned].soundBytes)};
}

void RipSession::tell(std::size_t planned, const TrackVerdict& verdict)
{
    records_[planned].told = true;
    ++(verdict.whole ? end_.whole : end_.broken);
    if (verdict.whole)
        end_.playSeconds += verdict.playSeconds;
    view_.trackEnds(verdict);
}

/// The verdicts that are still to come, then the tracks that were not begun.
void RipSession::tellRest()
{
    for (std::size_t i = 0; i < records_.size(); ++i)
        if (records_[i].begun && !records_[i].told)
            tell(i, judge_.verdictOn(i));
    for (std::size_t i = 0; i < records_.size(); ++i) {
        if (records_[i].begun)
            continue;
        ++end_.left;
        view_.trackIsLeftOut(
            {.number = plan_.tracks[i].track.number,
             .path = plan_.tracks[i].hostPath,
             .playSeconds = playSeconds(plan_.tracks[i].soundBytes),
             .text = interrupted_ ? "left out: the run was stopped" : "left out: the run ended before it"});
    }
}

void RipSession::breakOff(const std::string& why)
{
    judge_.brokenOff(why);
    if (inHand_) {
        TrackRecord& record = records_[*inHand_];
        record.taken = platform_.clock.now() - trackStarted_;
        // In the middle of its encoding the WAV file was judged already.
        if (!record.written)
            record.written = FileVerdict{false, "unfinished: " + why};
        inHand_.reset();
    }
    tellRest();
    end_.taken = elapsed();
    view_.runEnds(end_);
}

void RipSession::noteProblem(std::string text)
{
    if (inHand_)
        records_[*inHand_].problem = std::move(text);
}

void RipSession::noteSource(std::string text)
{
    if (inHand_)
        records_[*inHand_].source = std::move(text);
}

void RipSession::decodeEnded(const platform::DecodeReport& report)
{
    // A stream that an earlier track has left open ends with the one after it.
    if (inHand_ && report.track == plan_.tracks[*inHand_].row)
        records_[*inHand_].report = report;
}

void RipSession::showProgress()
{
    if (!inHand_ && !encodingNow_)
        return;
    RunProgress progress;
    // Not encodeBusy: beside encoders in the background the next track is being read.
    const bool encoding =
        !inHand_ || program_.forms().ripdeck().Label6[state::statusLabel].caption.get() == L"Encoding";
    progress.trackPart = encoding ? 1 : partRead();
    progress.playSecondsRead =
        playSecondsDone_ + (inHand_ ? progress.trackPart * playSeconds(plan_.tracks[*inHand_].soundBytes) : 0);
    progress.totalPart = playSecondsTotal_ > 0 ? progress.playSecondsRead / playSecondsTotal_ : 0;
    // A batch is read whole, then encoded: half of the way each.
    if (judge_.encodes() && program_.state().settings.encodeSingle == 0)
        progress.totalPart = (progress.totalPart + encodedPart()) / 2;
    progress.elapsed = elapsed();
    if (encoding)
        progress.activity = RunProgress::Activity::encoding;
    view_.progress(progress);
}

/// Of the track in hand, 0 to 1. The engine's form is not to be loaded for a question.
double RipSession::partRead() const
{
    constexpr double wholeBar = 100;
    if (program_.state().path.ripEngineMode == 1)
        return program_.forms().ripdeck().Trackprogress.value.get() / wholeBar;
    const controls::Slider& position = program_.forms().cdrip1().SliderPosition;
    return static_cast<double>(position.value()) / position.max();
}

double RipSession::encodedPart() const
{
    const std::ptrdiff_t started = encodersStarted();
    return started == 0 ? 0 : static_cast<double>(started - 1) / static_cast<double>(records_.size());
}

Seconds RipSession::elapsed() const
{
    return platform_.clock.now() - started_;
}

void RipSession::interrupt()
{
    if (!interrupted_) {
        interrupted_ = true;
        program_.forms().ripdeck().icntla[state::stopButton].mouseUp(controls::MouseButton::left);
        return;
    }
    host_.endChildren();
    breakOff("the run was broken off");
    platform_.processes.endProgram(static_cast<int>(ExitStatus::incomplete));
}

}
