#include "console/track_judge.h"

#include "console/genre_byte.h"
#include "console/judged_file.h"
#include "console/run_host.h"
#include "console/run_processes.h"
#include "console/wav_verdict.h"
#include "encode/commands.h"
#include "encode/encoder_kind.h"

#include <algorithm>
#include <filesystem>

namespace tonquay::console {

namespace {

/// What is to be known of a track whose file is whole, beside that.
std::string remarksOn(const TrackRecord& record, const TrackVerdict& verdict)
{
    std::string text = troublesText(verdict.troubles);
    if (verdict.whole)
        addRemark(text, record.source);
    return text;
}

/// Tags of Ogg files are switches of their encoder, which only one kind is given.
bool carriesOggTags(const state::RipSettings& settings)
{
    return !encode::hasOwnSwitches(settings) &&
           encode::encoderKind(settings.encoderPath) == encode::EncoderKind::oggenc;
}

}

TrackJudge::TrackJudge(app::Program& program, platform::Platform& platform, RunProcesses& processes, RunHost& host,
                       const RipPlan& plan, std::vector<TrackRecord>& records)
    : program_(program),
      platform_(platform),
      processes_(processes),
      host_(host),
      plan_(plan),
      records_(records)
{}

void TrackJudge::runBegins()
{
    begunAt_ = fileTimeNow(plan_.folder);
}

void TrackJudge::judgeWritten(std::size_t planned)
{
    TrackRecord& record = records_[planned];
    if (record.written)
        return;
    if (plan_.recordingFolder)
        record.written = verdictOnRecording(planned);
    else if (std::string text = whyNotRead(record, plan_.tracks[planned].row); !text.empty())
        record.written = FileVerdict{false, std::move(text)};
    else
        record.written = verdictOnWritten(planned);
}

FileVerdict TrackJudge::verdictOnRecording(std::size_t planned) const
{
    const PlannedTrack& track = plan_.tracks[planned];
    if (const std::string& problem = records_[planned].problem; !problem.empty())
        return FileVerdict{false, problem};
    return judgeRecording(track.wavHostPath, {.sampleBytes = track.soundBytes, .runBegan = begunAt_});
}

FileVerdict TrackJudge::verdictOnWritten(std::size_t planned)
{
    const PlannedTrack& track = plan_.tracks[planned];
    const std::optional<platform::DecodeReport>& report = records_[planned].report;
    if (plan_.format == Format::wma)
        return judgeWma(track.hostPath, wmaExpectationOf(planned),
                        [this](const std::string& path) { return host_.readWma(path); });
    return judgeWav(track.wavHostPath,
                    {.sampleBytes = track.soundBytes, .bytesRead = report ? report->bytesDelivered : 0});
}

/// The boxes of the engine's form have what was handed to the encoder; the one of the title, for the track in hand.
WmaExpectation TrackJudge::wmaExpectationOf(std::size_t planned)
{
    const auto& boxes = program_.forms().cdrip1().txtWMATags;
    return {.playSeconds = playSeconds(plan_.tracks[planned].soundBytes),
            .runBegan = begunAt_,
            .title = boxes[state::wmaTitle].text,
            .artist = boxes[state::wmaAuthor].text,
            .album = boxes[state::wmaAlbum].text,
            .genre = boxes[state::wmaGenre].text,
            .comment = boxes[state::wmaDescription].text,
            .year = boxes[state::wmaYear].text};
}

void TrackJudge::encoderEnded(platform::Processes::Child child)
{
    const auto record = std::ranges::find(records_, child, &TrackRecord::encoder);
    if (record == records_.end())
        return;
    const JudgedFile file(plan_.tracks[static_cast<std::size_t>(record - records_.begin())].hostPath);
    record->unwritten = !file.problem().empty() || file.changed() < begunAt_;
}

void TrackJudge::setGenres()
{
    const auto genre = genreNumber(program_.state().disc.discGenre);
    if (plan_.format != Format::mp3 || !genre)
        return;
    for (std::size_t i = 0; i < records_.size(); ++i)
        // Where no encoder has written, an older file of the user's may stand there.
        if (records_[i].encoder.value_or(0) != 0 && !records_[i].unwritten)
            passOver(platform_.log, setGenreByte(platform_.files, plan_.tracks[i].path, *genre), "Set the genre");
}

TrackVerdict TrackJudge::verdictOn(std::size_t planned)
{
    const TrackRecord& record = records_[planned];
    const PlannedTrack& track = plan_.tracks[planned];
    TrackVerdict verdict{.number = track.track.number,
                         .path = track.hostPath,
                         .playSeconds = playSeconds(track.soundBytes),
                         .taken = record.taken};
    if (record.report)
        verdict.crc = record.report->crc32;
    verdict.whole = record.written && record.written->whole;
    verdict.text = record.written ? record.written->text : "unfinished";
    if (record.report && verdict.whole)
        verdict.troubles = record.report->troubles;
    if (!encodes() || !verdict.whole) {
        addRemark(verdict.text, remarksOn(record, verdict));
        return verdict;
    }

    const auto code = record.encoder ? processes_.exitCode(*record.encoder) : std::nullopt;
    verdict.text = whyNotEncoded(record, code);
    verdict.whole = verdict.text.empty();
    if (verdict.whole) {
        const EncodedVerdict file =
            judgeEncoded(track.hostPath, expectationOf(planned), [this](const std::string& path) {
                return host_.readTags(path, platform::SoundReading::whole);
            });
        verdict.whole = file.whole;
        verdict.text = file.text;
    }
    if (verdict.whole)
        addRemark(verdict.text, remarksOn(record, verdict));
    if (!verdict.whole && !brokenOff_.empty())
        verdict.text = "unfinished: " + brokenOff_;
    if (std::error_code ignored; !verdict.whole && std::filesystem::exists(track.wavHostPath, ignored))
        verdict.text += "; its WAV file stays: " + track.wavHostPath;
    return verdict;
}

EncodedExpectation TrackJudge::expectationOf(std::size_t planned) const
{
    const state::AppState& state = program_.state();
    const std::int32_t number = plan_.tracks[planned].row + 1;
    return {.format = plan_.format,
            .playSeconds = playSeconds(records_[planned].written->soundBytes),
            .runBegan = begunAt_,
            .unwritten = records_[planned].unwritten,
            .title = state.disc.trackTitles(number),
            .track = number,
            .tagged = plan_.format == Format::mp3 || carriesOggTags(state.settings)};
}

}
