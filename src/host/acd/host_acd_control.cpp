#include "host/acd/host_acd_control.h"

#include "base/red_book.h"
#include "base/text.h"
#include "host/acd/drive_probe.h"
#include "host/audio/sound.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

namespace tonquay::host {

namespace {

constexpr std::int16_t started = 0;
constexpr std::int16_t failed = 1;

/// 44.1 samples a millisecond.
constexpr std::int64_t sampleAtMs(std::int64_t ms)
{
    constexpr std::int64_t samplesIn10Ms = 441;
    return ms * samplesIn10Ms / 10;
}

/// The track's place in the table; nothing where there is no audio track of that number.
std::optional<std::size_t> placeOf(const std::vector<platform::DiscTrack>& tracks, std::int16_t track)
{
    if (track < 1 || static_cast<std::size_t>(track) > tracks.size())
        return std::nullopt;
    const auto place = static_cast<std::size_t>(track) - 1;
    const platform::DiscTrack& found = tracks[place];
    return found.audio && found.sectorCount > 0 ? std::optional(place) : std::nullopt;
}

/// The track and its neighbours, as far as they are sound without a gap between them.
SectorRun soundAround(const std::vector<platform::DiscTrack>& tracks, std::size_t place)
{
    SectorRun run{tracks[place].firstSector, tracks[place].sectorCount};
    if (place > 0) {
        const platform::DiscTrack& before = tracks[place - 1];
        if (before.audio && before.firstSector + before.sectorCount == run.first)
            run = {before.firstSector, before.sectorCount + run.count};
    }
    if (place + 1 < tracks.size()) {
        const platform::DiscTrack& after = tracks[place + 1];
        if (after.audio && after.firstSector == run.end())
            run.count += after.sectorCount;
    }
    return run;
}

std::string seconds(const std::vector<std::int32_t>& list)
{
    std::string text;
    for (const std::int32_t second : list)
        text += (text.empty() ? "" : ", ") + std::to_string(second);
    return text;
}

}

/// What an extraction has to say, on its way from its thread to the logic's. Progress is said again only after the last
/// word was heard.
struct HostAcdControl::News {
    std::uint64_t number = 0;
    std::atomic<std::int32_t> tenths{0};
    std::atomic<bool> posted{false};
};

HostAcdControl::HostAcdControl(DriveSet& drives, platform::FileSystem& files, platform::EventLoop& loop,
                               platform::Diagnostics& log)
    : drives_(drives),
      files_(files),
      loop_(loop),
      log_(log),
      player_(loop, log),
      alive_(std::make_shared<const bool>(true))
{}

HostAcdControl::~HostAcdControl() = default;

Drive* HostAcdControl::current()
{
    return drive_ == 0 ? nullptr : &drives_.at(static_cast<std::size_t>(drive_ - 1));
}

base::Result<std::int16_t> HostAcdControl::Probe()
{
    base::Status trouble;
    for (std::size_t i = 0; i < drives_.count(); ++i) {
        const base::Status probed = probeDrive(drives_.at(i), reaper_);
        if (probed)
            return std::int16_t{0};
        trouble = probed;
    }
    if (!trouble)
        return trouble.failure();
    return std::int16_t{0};
}

void HostAcdControl::SelectDrive(std::int16_t drive)
{
    drive_ = drive >= 1 && drive <= GetDriveCount() ? drive : std::int16_t{0};
}

std::int16_t HostAcdControl::GetDriveCount()
{
    return static_cast<std::int16_t>(drives_.count());
}

std::wstring HostAcdControl::GetDriveName(std::int16_t drive)
{
    if (drive < 1 || drive > GetDriveCount())
        return {};
    return std::wstring(1, driveLetter(static_cast<std::size_t>(drive - 1)));
}

std::int16_t HostAcdControl::GetTrackCount()
{
    Drive* const drive = current();
    if (drive == nullptr)
        return 0;
    const auto tracks = drive->tracks();
    const auto last = std::find_if(tracks.rbegin(), tracks.rend(), [](const auto& track) { return track.audio; });
    return static_cast<std::int16_t>(tracks.rend() - last);
}

base::Result<std::int32_t> HostAcdControl::GetTrackLength(std::int16_t track)
{
    Drive* const drive = current();
    const auto tracks = drive != nullptr ? drive->tracks() : std::vector<platform::DiscTrack>();
    const auto place = placeOf(tracks, track);
    if (!place)
        return base::Failure{base::Failure::Kind::notFound, "track " + std::to_string(track),
                             "there is no such audio track"};
    return static_cast<std::int32_t>(std::int64_t{tracks[*place].sectorCount} * 1000 /
                                     base::red_book::sectorsPerSecond);
}

void HostAcdControl::SetRipMode(std::int16_t mode)
{
    if (mode >= 0 && mode <= 2)
        mode_ = static_cast<SectorReader::Mode>(mode);
}

std::int16_t HostAcdControl::RipTrack(std::int16_t track, std::wstring_view path)
{
    return startExtraction(track, path, 0, std::numeric_limits<std::int64_t>::max()) ? started : failed;
}

std::int16_t HostAcdControl::RipPartial(std::int16_t track, std::wstring_view path, std::int32_t startMs,
                                        std::int32_t lengthMs)
{
    const std::int64_t from = std::max(startMs, 0);
    const std::int64_t to = from + std::max(lengthMs, 0);
    return startExtraction(track, path, sampleAtMs(from), sampleAtMs(to)) ? started : failed;
}

bool HostAcdControl::startExtraction(std::int16_t track, std::wstring_view path, std::int64_t firstSample,
                                     std::int64_t endSample)
{
    const auto refuse = [&](const std::string& why) {
        log_.line(refusedArea, why);
        return false;
    };
    if (extraction_ && !aborted_)
        return refuse("another extraction is under way");
    // One that was broken off has closed its file when this returns, and its end is nobody's any more.
    extraction_.reset();
    Drive* const drive = current();
    std::shared_ptr<Disc> disc = drive != nullptr ? drive->openDisc() : nullptr;
    if (!disc)
        return refuse("there is no audio disc in the drive");
    const auto tracks = disc->tracks();
    const auto place = placeOf(tracks, track);
    if (!place)
        return refuse("there is no such audio track");
    const platform::DiscTrack& entry = tracks[*place];
    const std::int64_t end = std::min(endSample, entry.sectorCount * base::red_book::samplesPerSector);
    if (firstSample >= end)
        return refuse("the wanted part is behind the end of the track");
    auto file = files_.openBinary(path);
    if (!file)
        return refuse(base::describe(file.failure()));
    // The end of an older, longer file would stay behind the new sound.
    if (const auto emptied = (*file)->endHere(); !emptied)
        return refuse(base::describe(emptied.failure()));

    Extraction::Calls calls = callsOfNextExtraction();
    aborted_ = false;
    Extraction::Job job{.disc = std::move(disc),
                        .drive = static_cast<std::uint32_t>(drive_ - 1),
                        .track = track - 1,
                        .trackSector = entry.firstSector,
                        .firstByte = firstSample * std::int64_t{frameBytes},
                        .bytes = (end - firstSample) * std::int64_t{frameBytes},
                        .allowed = soundAround(tracks, *place),
                        .mode = mode_,
                        .file = std::move(*file),
                        .name = nameOf(drive_, track)};
    try {
        extraction_ = std::make_unique<Extraction>(std::move(job), std::move(calls), log_, reaper_);
    } catch (const std::system_error& error) {
        return refuse(std::string("no thread to read it: ") + error.what());
    }
    return true;
}

Extraction::Calls HostAcdControl::callsOfNextExtraction()
{
    const auto news = std::make_shared<News>();
    news->number = ++number_;
    const std::weak_ptr<const bool> alive = alive_;
    Extraction::Calls calls;
    calls.progress = [this, alive, news](std::int32_t tenths) {
        news->tenths = tenths;
        if (!news->posted.exchange(true))
            loop_.post([this, alive, news] {
                if (!alive.expired())
                    tellProgress(news);
            });
    };
    calls.ended = [this, alive, number = number_](const platform::DecodeReport& report) {
        loop_.post([this, alive, number, report] {
            if (!alive.expired())
                extractionEnded(number, report);
        });
    };
    return calls;
}

std::string HostAcdControl::nameOf(std::int16_t drive, std::int16_t track)
{
    return "drive " + base::utf8(GetDriveName(drive)) + ", track " + std::to_string(track);
}

void HostAcdControl::tellProgress(const std::shared_ptr<News>& news)
{
    news->posted = false;
    if (news->number == number_ && extraction_ && events_.ripProgress)
        events_.ripProgress(news->tenths);
}

void HostAcdControl::extractionEnded(std::uint64_t number, const platform::DecodeReport& report)
{
    // One that came too late would end the extraction that was started after it.
    if (number != number_ || !extraction_)
        return;
    extraction_.reset();
    const std::string name =
        nameOf(static_cast<std::int16_t>(report.drive + 1), static_cast<std::int16_t>(report.track + 1));
    const platform::ReadTroubles& troubles = report.troubles;
    for (const auto& [what, list] :
         {std::pair{"read again", &troubles.reread}, std::pair{"repaired", &troubles.repaired},
          std::pair{"given up", &troubles.givenUp}})
        if (!list->empty())
            log_.line("extraction", name + ": " + what + " in the seconds " + seconds(*list));
    if (report.end == platform::DecodeReport::End::gone)
        log_.line("extraction", name + ": the disc is gone");
    if (onReadEnd_)
        onReadEnd_(report);
    if (events_.ripDone)
        events_.ripDone();
}

void HostAcdControl::AbortRip()
{
    if (player_.isEngaged()) {
        player_.stop();
    } else if (extraction_) {
        aborted_ = true;
        extraction_->abort();
    }
}

std::int16_t HostAcdControl::PlayTrack(std::int16_t track, std::int32_t start, std::int32_t end)
{
    player_.stop();
    Drive* const drive = current();
    std::shared_ptr<Disc> disc = drive != nullptr ? drive->openDisc() : nullptr;
    const auto place = disc ? placeOf(disc->tracks(), track) : std::nullopt;
    if (!place)
        return failed;
    constexpr std::int64_t sectorsPerSecond = base::red_book::sectorsPerSecond;
    constexpr std::int64_t msPerSecond = 1000;
    const platform::DiscTrack entry = disc->tracks()[*place];
    const auto first = std::max(start, 0) * sectorsPerSecond / msPerSecond;
    const auto last =
        end < 0 ? std::int64_t{entry.sectorCount}
                : std::min<std::int64_t>(entry.sectorCount, (end * sectorsPerSecond + msPerSecond - 1) / msPerSecond);
    if (first >= last)
        return failed;
    const ReadAhead::Stretch stretch{entry.firstSector + static_cast<int>(first), static_cast<int>(last - first)};
    return player_.play(std::move(disc), stretch) ? started : failed;
}

void HostAcdControl::StopPlay()
{
    player_.stop();
}

void HostAcdControl::PausePlay()
{
    player_.pause();
}

void HostAcdControl::ResumePlay()
{
    player_.resume();
}

void HostAcdControl::Eject()
{
    Drive* const drive = current();
    if (drive != nullptr && !drive->openDoor())
        log_.line("drive", "drive " + base::utf8(GetDriveName(drive_)) + " does not open");
}

}
