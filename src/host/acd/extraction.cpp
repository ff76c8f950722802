#include "host/acd/extraction.h"

#include "base/red_book.h"
#include "base/result.h"
#include "host/acd/sound_queue.h"
#include "host/audio/checksum.h"
#include "platform/wav_file.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <system_error>
#include <utility>

namespace tonquay::host {

using platform::DecodeReport;

namespace {

constexpr std::int64_t sectorBytes = Disc::sectorBytes;

/// The sectors that hold the wanted bytes.
SectorRun sectorsOf(const Extraction::Job& job)
{
    const auto first = job.firstByte / sectorBytes;
    const auto end = (job.firstByte + job.bytes + sectorBytes - 1) / sectorBytes;
    return {job.trackSector + static_cast<int>(first), static_cast<int>(end - first)};
}

}

/// What both threads share; the last of them deletes it.
struct Extraction::Work {
    Work(Job given, Calls told, platform::Diagnostics& diagnostics)
        : job(std::move(given)),
          calls(std::move(told)),
          log(diagnostics),
          wanted(sectorsOf(job)),
          journal(wanted)
    {}

    Job job;
    Calls calls;
    platform::Diagnostics& log;
    SectorRun wanted;
    ReadJournal journal;
    SoundQueue queue;
    std::atomic<bool> stop{false};
    std::atomic<bool> gone{false};

    // The writer's own.
    std::int64_t delivered = 0;
    std::int64_t skip = job.firstByte % sectorBytes; ///< bytes before the first wanted one in its sector
    std::uint32_t checksum = 0;
    std::int32_t toldTenths = -1;
    std::chrono::steady_clock::time_point nextWord{};
    base::Status written{};

    void readAll();
    void writeAll();
    base::Status copySound(platform::WavFile& file);
    void watchSilence(std::uint64_t& answersThen, std::chrono::steady_clock::time_point since);
    void tellProgress();
    DecodeReport report() const;
};

void Extraction::Work::readAll()
{
    const auto reader = makeSectorReader(job.mode, {*job.disc, wanted, job.allowed, journal, stop});
    for (int left = wanted.count; left > 0 && !stop;) {
        SoundQueue::Chunk chunk = queue.blank();
        const std::size_t got = reader->read(chunk.room());
        chunk.size = got * Disc::sectorBytes;
        left -= static_cast<int>(got);
        if (got == 0 || !queue.put(std::move(chunk)))
            break;
    }
    gone = reader->discIsGone();
    queue.end();
}

void Extraction::Work::writeAll()
{
    {
        platform::WavFile file(std::move(job.file));
        written = file.writeHeader({});
        if (written)
            written = copySound(file);
        if (written && delivered == job.bytes)
            written = file.finish(delivered);
    }
    if (!written) {
        log.line("extraction", job.name + ": " + base::describe(written.failure()));
        stop = true;
    }
    queue.close();
    calls.ended(report());
}

base::Status Extraction::Work::copySound(platform::WavFile& file)
{
    std::uint64_t answersThen = journal.answers();
    auto since = std::chrono::steady_clock::now();
    while (delivered < job.bytes) {
        auto chunk = queue.take(job.patience);
        if (!chunk) {
            if (queue.ended())
                break;
            watchSilence(answersThen, since);
            continue;
        }
        since = std::chrono::steady_clock::now();
        const auto before = static_cast<std::size_t>(std::exchange(skip, 0));
        const auto rest = chunk->sound().subspan(std::min(before, chunk->size));
        const auto sound = rest.first(std::min(rest.size(), static_cast<std::size_t>(job.bytes - delivered)));
        if (auto done = file.write(sound); !done)
            return done;
        checksum = crc32(checksum, sound);
        delivered += static_cast<std::int64_t>(sound.size());
        queue.giveBack(std::move(*chunk));
        tellProgress();
    }
    return {};
}

/// A drive that hangs in a read answers nothing; one that works at a bad place does, though no sound comes.
void Extraction::Work::watchSilence(std::uint64_t& answersThen, std::chrono::steady_clock::time_point since)
{
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - since).count();
    const std::uint64_t answers = journal.answers();
    const auto second = (job.firstByte + delivered) / base::red_book::bytesPerSecond;
    log.line("extraction", job.name + ": no sound for " + std::to_string(seconds) + " s behind second " +
                               std::to_string(second) + " of the track; " +
                               (std::exchange(answersThen, answers) == answers ? "the drive does not answer"
                                                                               : "the drive tries again"));
}

void Extraction::Work::tellProgress()
{
    constexpr std::int64_t whole = 1000;
    constexpr std::chrono::milliseconds interval{40};
    const auto tenths = static_cast<std::int32_t>(delivered * whole / job.bytes);
    const auto now = std::chrono::steady_clock::now();
    if (tenths == toldTenths || (now < nextWord && tenths < whole))
        return;
    toldTenths = tenths;
    nextWord = now + interval;
    calls.progress(tenths);
}

DecodeReport Extraction::Work::report() const
{
    DecodeReport report{
        .drive = job.drive, .track = job.track, .bytesExpected = job.bytes, .bytesDelivered = delivered};
    report.crc32 = checksum;
    if (!written) {
        report.end = DecodeReport::End::unwritten;
        report.problem = base::describe(written.failure());
    } else if (delivered == job.bytes) {
        report.end = DecodeReport::End::complete;
    } else {
        report.end = gone ? DecodeReport::End::gone : DecodeReport::End::stopped;
    }
    const auto sectors = static_cast<int>((job.firstByte % sectorBytes + delivered + sectorBytes - 1) / sectorBytes);
    if (report.end == DecodeReport::End::gone)
        report.firstBadSector = wanted.first + sectors;
    report.troubles = journal.troubles(delivered > 0 ? sectors : 0, job.trackSector);
    return report;
}

Extraction::Extraction(Job job, Calls calls, platform::Diagnostics& log, ThreadReaper& reaper)
    : work_(std::make_shared<Work>(std::move(job), std::move(calls), log)),
      reaper_(reaper)
{
    reading_ = startInBackground([work = work_] {
        work->readAll();
        // Closing a drive may take its time, so it is closed here and not by the last owner.
        work->job.disc.reset();
    });
    try {
        writing_ = startInBackground([work = work_] { work->writeAll(); });
    } catch (const std::system_error&) {
        abort();
        reaper_.take(std::move(reading_));
        throw;
    }
}

Extraction::~Extraction()
{
    abort();
    writing_.thread.join();
    reaper_.take(std::move(reading_));
}

void Extraction::abort()
{
    work_->stop = true;
    work_->queue.close();
}

}
