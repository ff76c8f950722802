#include "disc/handover_file.h"

#include "base/format.h"
#include "base/sequential.h"
#include "base/text.h"
#include "state/settings_text.h"

#include <algorithm>

namespace tonquay::disc {

namespace {

void readName(base::SequentialReader& reader, std::wstring& field)
{
    if (reader.atEnd())
        return;
    reader.read(field);
    field = base::trim(field);
    demap(field);
}

}

void demap(std::wstring& text)
{
    std::ranges::replace(text, L'`', L'\'');
    std::ranges::replace(text, L'~', L',');
}

void parseHandover(std::wstring_view text, state::DiscInfo& disc)
{
    base::SequentialReader reader(text);
    readName(reader, disc.discArtist);
    readName(reader, disc.discAlbum);
    reader.read(disc.trackCount);
    for (std::size_t number = 1; number <= state::maxTracks; ++number) {
        std::wstring title = disc.trackTitles(static_cast<std::int64_t>(number));
        readName(reader, title);
        disc.trackTitles.set(static_cast<std::int64_t>(number), title);
    }
    readName(reader, disc.discComment);
    readName(reader, disc.discGenre);
    readName(reader, disc.discYear);
    readName(reader, disc.handoverDriveLetter);
}

bool readHandover(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path,
                  state::DiscInfo& disc)
{
    disc.trackTitles.clear();
    const auto text = state::settingsText(files, log, path);
    if (!text)
        return files.fileExists(path);
    parseHandover(*text, disc);
    return true;
}

void applyUnknownDiscNames(state::DiscInfo& disc)
{
    if (!base::isBlank(disc.trackTitles(1)) || !base::isBlank(disc.trackTitles(disc.trackCount)))
        return;
    disc.discArtist = L"Unknown Artist";
    disc.discAlbum = L"Unknown Title";
    const std::int64_t last = std::min<std::int64_t>(disc.trackCount, state::maxTracks);
    for (std::int64_t number = 1; number <= last; ++number)
        disc.trackTitles.set(number, L"Track " + base::twoDigits(number));
}

}
