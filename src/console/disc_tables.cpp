#include "console/disc_tables.h"

#include "base/red_book.h"
#include "console/abilities.h"
#include "console/play_time.h"
#include "console/screen_text.h"

#include <fmt/format.h>

namespace tonquay::console {

namespace {

void addName(std::string& text, std::string_view caption, std::wstring_view name)
{
    if (!name.empty())
        text += fmt::format("{:<9}{}\n", caption, shown(name));
}

std::string megabytes(const platform::DiscTrack& track)
{
    constexpr double mebibyte = 1024.0 * 1024.0;
    return fmt::format("{:.1f}", static_cast<double>(track.sectorCount * base::red_book::bytesPerSector) / mebibyte);
}

std::string abilityWords(const platform::DriveDescription& drive)
{
    std::string words;
    const auto add = [&words](std::string_view more) { words += (words.empty() ? "" : ", ") + std::string(more); };
    for (const Ability& ability : abilities)
        if ((drive.abilities & ability.bit) != 0)
            add(ability.words);
    if (drive.canOpen)
        add("opens and closes");
    if (drive.canLock)
        add("locks");
    return words;
}

}

std::string listTable(const platform::DiscTable& table)
{
    std::string text;
    addName(text, "Artist", table.names.artist);
    addName(text, "Album", table.names.album);
    addName(text, "Year", table.names.year);
    addName(text, "Genre", table.names.genre);
    addName(text, "Comment", table.names.comment);
    if (!text.empty())
        text += '\n';

    constexpr std::string_view row = "{:>5}  {:>8}  {:>8}  {}\n";
    text += fmt::format(row, "Track", "Time", "Size, MB", "Title");
    for (std::size_t i = 0; i < table.tracks.size(); ++i) {
        const platform::DiscTrack& track = table.tracks[i];
        const std::string title = i < table.names.titles.size() ? shown(table.names.titles[i]) : std::string{};
        text += fmt::format(row, track.number, clockText(wholeSeconds(track.sectorCount)), megabytes(track),
                            track.audio     ? title
                            : title.empty() ? "[data]"
                                            : "[data] " + title);
    }
    return text;
}

std::string drivesTable(const std::vector<platform::DriveDescription>& drives)
{
    std::string text;
    for (const platform::DriveDescription& drive : drives) {
        const std::string letter = drive.letter == 0 ? "-" : shown(std::wstring(1, drive.letter)) + ':';
        text += fmt::format("{:<4}{}{}\n", letter, shownBytes(drive.hostPath), drive.image ? "  (image)" : "");
        const auto addLine = [&text](std::string_view caption, const std::string& value) {
            if (!value.empty())
                text += fmt::format("    {:<9}{}\n", caption, value);
        };
        if (!drive.vendor.empty() || !drive.product.empty())
            addLine("Drive", shownBytes(fmt::format("{} {} {}", drive.vendor, drive.product, drive.revision)));
        addLine("Disc", drive.disc ? "an audio disc" : "none");
        if (drive.problem != platform::DriveProblem::none)
            addLine("Problem", shownBytes(drive.problemText));
        addLine("Reads", abilityWords(drive));
        if (drive.maxSpeedKbps > 0)
            addLine("Speed", fmt::format("{} Kbps", drive.maxSpeedKbps));
        if (drive.cacheKb > 0)
            addLine("Cache", fmt::format("{} KB", drive.cacheKb));
    }
    return text;
}

}
