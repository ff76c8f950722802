#include "naming/output_folder.h"

#include "base/text.h"

namespace tonquay::naming {

namespace {

bool hasArtistFolder(const state::RipSettings& settings, const state::DiscInfo& disc)
{
    return settings.dirMode >= 1 && !base::isBlank(disc.discArtist);
}

bool hasAlbumFolder(const state::RipSettings& settings, const state::DiscInfo& disc)
{
    return hasArtistFolder(settings, disc) && settings.dirMode == 2 && !base::isBlank(disc.discAlbum);
}

std::wstring artistFolder(const state::RipSettings& settings, const state::DiscInfo& disc)
{
    return settings.outputFolder + L'\\' + std::wstring(base::trim(disc.discArtist));
}

void makeFolder(platform::FileSystem& files, platform::Diagnostics& log, const std::wstring& folder)
{
    if (!files.folderExists(folder))
        passOver(log, files.createFolder(folder), "Make the output folder");
}

}

std::wstring outputFolder(const state::RipSettings& settings, const state::DiscInfo& disc)
{
    if (!hasArtistFolder(settings, disc))
        return settings.outputFolder;
    std::wstring folder = artistFolder(settings, disc);
    if (hasAlbumFolder(settings, disc))
        folder += L'\\' + std::wstring(base::trim(disc.discAlbum));
    return folder;
}

std::wstring makeOutputFolder(platform::FileSystem& files, platform::Diagnostics& log,
                              const state::RipSettings& settings, const state::DiscInfo& disc)
{
    if (hasArtistFolder(settings, disc))
        makeFolder(files, log, artistFolder(settings, disc));
    if (hasAlbumFolder(settings, disc))
        makeFolder(files, log, outputFolder(settings, disc));
    return outputFolder(settings, disc);
}

std::wstring joined(std::wstring_view folder, std::wstring_view name)
{
    std::wstring path(folder);
    if (folder.size() != 3)
        path += L'\\';
    return path += name;
}

}
