#include "tagging/file_search.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "naming/nonasc.h"
#include "naming/output_folder.h"

namespace tonquay::tagging {

namespace {

bool isFolder(platform::FileSystem& files, const std::wstring& parent, const std::wstring& name)
{
    return naming::fitsFileName(name) && files.folderExists(naming::joined(parent, name));
}

}

std::array<std::wstring, 8> candidateNames(const state::DiscInfo& disc, std::int32_t track)
{
    const std::wstring artist(base::trim(disc.discArtist));
    const std::wstring album(base::trim(disc.discAlbum));
    const std::wstring title(base::trim(disc.trackTitles(track)));
    const std::wstring plain = L"Track" + base::digits(track);
    return {
        plain,
        title,
        plain,
        artist + base::str(track),
        album + base::str(track),
        artist + L" - " + album + base::str(track),
        artist + L" - " + title,
        base::lastTwoDigits(track) + L" - " + title,
    };
}

std::wstring tagFolder(platform::FileSystem& files, std::wstring_view outputFolder, const state::DiscInfo& disc)
{
    std::wstring output(outputFolder);
    const std::wstring artist(base::trim(disc.discArtist));
    const std::wstring album(base::trim(disc.discAlbum));
    if (artist.empty() || !isFolder(files, output, artist))
        return output;
    const std::wstring ofArtist = naming::joined(output, artist);
    return !album.empty() && isFolder(files, ofArtist, album) ? naming::joined(ofArtist, album) : ofArtist;
}

std::optional<std::wstring> findTrackFile(platform::FileSystem& files, std::wstring_view folder,
                                          const state::DiscInfo& disc, std::int32_t track)
{
    for (const std::wstring& name : candidateNames(disc, track)) {
        if (!naming::fitsFileName(name))
            continue;
        std::wstring path = naming::joined(folder, name + L".MP3");
        if (files.fileExists(path))
            return path;
    }
    return std::nullopt;
}

}
