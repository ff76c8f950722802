#include "naming/output_folder.h"

#include "base/text.h"

namespace tonquay::naming {

namespace {

void makeFolder(platform::FileSystem& files, platform::Diagnostics& log, const std::wstring& folder)
{
    if (!files.folderExists(folder))
        passOver(log, files.createFolder(folder), "Make the output folder");
}

}

std::wstring makeOutputFolder(platform::FileSystem& files, platform::Diagnostics& log,
                              const state::RipSettings& settings, const state::DiscInfo& disc)
{
    if (settings.dirMode < 1 || base::isBlank(disc.discArtist))
        return settings.outputFolder;
    std::wstring folder = settings.outputFolder + L'\\' + std::wstring(base::trim(disc.discArtist));
    makeFolder(files, log, folder);
    if (settings.dirMode == 2 && !base::isBlank(disc.discAlbum)) {
        folder += L'\\' + std::wstring(base::trim(disc.discAlbum));
        makeFolder(files, log, folder);
    }
    return folder;
}

std::wstring joined(std::wstring_view folder, std::wstring_view name)
{
    std::wstring path(folder);
    if (folder.size() != 3)
        path += L'\\';
    return path += name;
}

}
