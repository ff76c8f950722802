#include "launcher/launch_desk.h"

#include "base/text.h"
#include "disc/handover_file.h"
#include "disc/handover_writer.h"
#include "platform/processes.h"
#include "platform/settings_store.h"
#include "state/rip_settings_file.h"
#include "state/settings_text.h"
#include "state/suite_files.h"

#include <algorithm>
#include <utility>

namespace tonquay::launcher {

using base::Failure;
using platform::DriveDescription;

namespace {

// The user's settings: which drive was handed over last, which one the ripper's settings had then, and where images
// lie.
constexpr std::wstring_view launcherSection = L"Launcher";
constexpr std::wstring_view driveKey = L"LastDrive";
constexpr std::wstring_view withSettings = L"SettingsDrive";
constexpr std::wstring_view imageFolderKey = L"ImageFolder";

}

LaunchDesk::LaunchDesk(platform::Platform platform, Machine machine)
    : platform_(platform),
      machine_(std::move(machine)),
      keptNames_(platform.files, platform.log, machine_.keptNamesFolder)
{}

void LaunchDesk::writeFirstSettings()
{
    state::Folders folders;
    folders.appFolder = machine_.programFolder;
    const auto missing = [&](std::wstring_view name) {
        return !platform_.files.fileExists(state::inFolder(machine_.programFolder, name));
    };
    if (missing(L"tqwin.ini") && !machine_.musicFolder.empty())
        state::writeDataFolder(platform_.files, platform_.log, folders, machine_.musicFolder);
    if (missing(L"TQWIN1.INI") && !machine_.mixer.empty())
        state::writeMixerPath(platform_.files, platform_.log, folders, machine_.mixer);
}

base::Result<SeenDisc> LaunchDesk::look(platform::Discs& discs, const DriveDescription& drive) const
{
    auto table = discs.read(drive.letter);
    if (!table)
        return table.failure();
    SeenDisc seen{.drive = drive, .table = std::move(*table), .names = {}, .source = NameSource::nowhere};
    seen.names = seen.table.names;
    if (auto kept = keptNames_.find(seen.table.discId)) {
        seen.names = std::move(*kept);
        seen.source = NameSource::kept;
    } else if (!isEmpty(seen.names)) {
        seen.source = drive.image ? NameSource::sheet : NameSource::disc;
    }
    seen.names.titles.resize(seen.table.tracks.size());
    return seen;
}

std::optional<DriveDescription> LaunchDesk::choose(const std::vector<DriveDescription>& drives) const
{
    const std::wstring saved = savedDriveLetter();
    std::wstring last;
    if (platform_.settings.get(launcherSection, withSettings, saved) == saved)
        last = platform_.settings.get(launcherSection, driveKey, {});
    for (const std::wstring& wanted : {last, saved})
        for (const DriveDescription& drive : drives)
            if (drive.disc && !wanted.empty() && base::upper(drive.letter) == base::upper(wanted.front()))
                return drive;
    const auto first = std::ranges::find_if(drives, &DriveDescription::disc);
    return first == drives.end() ? std::nullopt : std::optional(*first);
}

std::wstring LaunchDesk::savedDriveLetter() const
{
    return std::wstring(
        base::trim(state::savedRipSettings(platform_.files, platform_.log, machine_.programFolder, {}).driveLetter));
}

base::Status LaunchDesk::startRipper(const SeenDisc& disc, const platform::DiscNames& names)
{
    if (machine_.ripper.empty())
        return Failure{Failure::Kind::notFound, "ripdeck",
                       "the ripper is not installed beside the launcher; install the program anew"};
    if (!sameNames(names, disc.names))
        passOver(platform_.log, keptNames_.keep(disc.table.discId, names), "Keep the disc's names");

    platform::DiscTable table = disc.table;
    table.names = names;
    const disc::HandOver handOver = disc::makeHandOver(table, disc.drive.letter);
    for (const std::string& change : handOver.changes)
        platform_.log.line("names", change);
    const std::wstring path = state::inFolder(machine_.programFolder, disc::handoverName);
    if (auto written = platform_.files.writeWhole(path, handOver.bytes); !written)
        return written;
    platform_.settings.set(launcherSection, driveKey, std::wstring(1, disc.drive.letter));
    platform_.settings.set(launcherSection, withSettings, savedDriveLetter());
    const auto started = platform_.processes.start(L'"' + machine_.ripper + L"\" " + machine_.programFolder,
                                                   platform::Processes::WindowStyle::normal);
    if (!started)
        return started.failure();
    return {};
}

std::string LaunchDesk::imageFolder() const
{
    const std::wstring folder = platform_.settings.get(launcherSection, imageFolderKey, machine_.musicFolder);
    return folder.empty() ? std::string() : platform_.files.hostPath(folder);
}

void LaunchDesk::keepImageFolder(const std::string& hostFolder)
{
    platform_.settings.set(launcherSection, imageFolderKey, platform_.files.programPath(hostFolder));
}

std::string LaunchDesk::encoderWarning() const
{
    const bool lame = static_cast<bool>(machine_.programs.lame);
    const bool ogg = static_cast<bool>(machine_.programs.oggenc);
    if (lame && ogg)
        return {};
    if (!lame && !ogg)
        return "No encoder is installed: tracks become WAV files. Install the package lame for MP3 files, or "
               "vorbis-tools for Ogg files.";
    return lame ? "No Ogg encoder is installed. Install the package vorbis-tools for Ogg files."
                : "No MP3 encoder is installed. Install the package lame for MP3 files.";
}

bool sameNames(const platform::DiscNames& left, const platform::DiscNames& right)
{
    return left.artist == right.artist && left.album == right.album && left.year == right.year &&
           left.genre == right.genre && left.comment == right.comment && left.titles == right.titles;
}

bool isEmpty(const platform::DiscNames& names)
{
    return names.artist.empty() && names.album.empty() && names.year.empty() && names.genre.empty() &&
           names.comment.empty() &&
           std::ranges::all_of(names.titles, [](const std::wstring& title) { return title.empty(); });
}

}
