#include "console/rip_session.h"

#include "base/numbers.h"
#include "base/text.h"
#include "console/wav_verdict.h"
#include "platform/processes.h"

#include <algorithm>

namespace tonquay::console {

RipSession::RipSession(app::Program& program, platform::Platform platform, RipView& view, RipPlan plan)
    : program_(program),
      platform_(platform),
      view_(view),
      plan_(std::move(plan)),
      begun_(plan_.tracks.size())
{
    for (std::size_t i = 0; i < plan_.tracks.size(); ++i)
        playSecondsTotal_ += playSecondsOf(i);
}

double RipSession::playSecondsOf(std::size_t planned) const
{
    return playSeconds(plan_.tracks[planned].track.sectorCount);
}

RunEnd RipSession::run(const std::string& format)
{
    constexpr std::chrono::milliseconds progressInterval{200};
    state::RipdeckControls& main = program_.forms().ripdeck();
    started_ = platform_.clock.now();
    view_.runBegins({.tracks = static_cast<int>(plan_.tracks.size()),
                     .playSeconds = playSecondsTotal_,
                     .folder = plan_.folder,
                     .format = format});
    for (const PlannedTrack& track : plan_.tracks)
        main.list1.select(track.row, true);

    const auto following = main.Label8.caption.follow(
        [this](const std::wstring& number) { trackBegins(static_cast<std::int32_t>(base::val(number))); });
    const auto ticking = platform_.loop.every(progressInterval, [this] { showProgress(); });
    main.icntla[state::startButton].mouseDown(controls::MouseButton::left);
    main.icntla[state::startButton].mouseUp(controls::MouseButton::left);
    trackEnds();
    leaveOut();
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
    trackEnds();
    inHand_ = static_cast<std::size_t>(planned - plan_.tracks.begin());
    begun_[*inHand_] = true;
    trackStarted_ = platform_.clock.now();
    view_.trackBegins({.number = planned->track.number,
                       .ordinal = static_cast<int>(std::ranges::count(begun_, true)),
                       .title = program_.state().disc.trackTitles(number),
                       .path = planned->hostPath,
                       .playSeconds = playSecondsOf(*inHand_)});
}

void RipSession::trackEnds()
{
    if (!inHand_)
        return;
    const PlannedTrack& planned = plan_.tracks[*inHand_];
    TrackVerdict verdict{.number = planned.track.number,
                         .path = planned.hostPath,
                         .playSeconds = playSecondsOf(*inHand_),
                         .taken = platform_.clock.now() - trackStarted_};
    const std::string notRead = whyNotRead(planned);
    const WavVerdict file = judgeWav(planned.hostPath, {.sampleBytes = sampleBytes(planned.track.sectorCount),
                                                        .bytesRead = report_ ? report_->bytesDelivered : 0});
    verdict.whole = file.whole && notRead.empty();
    verdict.text = notRead.empty() ? file.text : notRead;
    if (report_)
        verdict.crc = report_->crc32;
    ++(verdict.whole ? end_.whole : end_.broken);
    if (verdict.whole)
        end_.playSeconds += verdict.playSeconds;
    playSecondsDone_ += verdict.playSeconds;
    inHand_.reset();
    report_.reset();
    problem_.clear();
    view_.trackEnds(verdict);
}

std::string RipSession::whyNotRead(const PlannedTrack& planned) const
{
    using End = platform::DecodeReport::End;
    std::string otherwise = problem_.empty() ? "it could not be opened for reading" : problem_;
    if (!report_ || report_->track != planned.row)
        return otherwise;
    switch (report_->end) {
    case End::complete: return problem_;
    case End::unreadable:
        return "sector " + std::to_string(report_->firstBadSector) +
               " cannot be read; clean the disc or try another drive";
    case End::gone: return "the disc was taken out";
    case End::stopped: return otherwise;
    }
    return otherwise;
}

void RipSession::leaveOut()
{
    for (std::size_t i = 0; i < plan_.tracks.size(); ++i) {
        if (begun_[i])
            continue;
        ++end_.left;
        view_.trackIsLeftOut(
            {.number = plan_.tracks[i].track.number,
             .path = plan_.tracks[i].hostPath,
             .playSeconds = playSecondsOf(i),
             .text = interrupted_ ? "left out: the run was stopped" : "left out: the run ended before it"});
    }
}

void RipSession::breakOff(const std::string& why)
{
    if (inHand_) {
        const PlannedTrack& planned = plan_.tracks[*inHand_];
        ++end_.broken;
        view_.trackEnds({.number = planned.track.number,
                         .path = planned.hostPath,
                         .taken = platform_.clock.now() - trackStarted_,
                         .text = "unfinished: " + why});
    }
    leaveOut();
    end_.taken = elapsed();
    view_.runEnds(end_);
}

void RipSession::showProgress()
{
    if (!inHand_)
        return;
    const controls::Slider& position = program_.forms().cdrip1().SliderPosition;
    RunProgress progress;
    progress.trackPart = static_cast<double>(position.value()) / position.max();
    progress.playSecondsRead = playSecondsDone_ + progress.trackPart * playSecondsOf(*inHand_);
    progress.totalPart = playSecondsTotal_ > 0 ? progress.playSecondsRead / playSecondsTotal_ : 0;
    progress.elapsed = elapsed();
    if (program_.state().flags.encodeBusy == 1)
        progress.activity = RunProgress::Activity::encoding;
    view_.progress(progress);
}

Seconds RipSession::elapsed() const
{
    return platform_.clock.now() - started_;
}

void RipSession::interrupt()
{
    constexpr int incomplete = 1;
    if (!interrupted_) {
        interrupted_ = true;
        program_.forms().ripdeck().icntla[state::stopButton].mouseUp(controls::MouseButton::left);
        return;
    }
    breakOff("the run was broken off");
    platform_.processes.endProgram(incomplete);
}

}
