#include "host/system/host_system_info.h"

#include "base/text.h"
#include "host/posix/descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

/// A folder that is ours alone. Its name holds digits only behind the program's name, so nothing in it can be taken for
/// the name of an encoder.
std::string makePrivateFolder(const std::string& above, platform::Diagnostics& log)
{
    const std::string stem = above + "/cd-tonquay-" + std::to_string(getpid()) + '-';
    for (int number = 1; number <= 1000; ++number) {
        std::string folder = stem + std::to_string(number);
        if (mkdir(folder.c_str(), 0700) == 0) {
            mkdir((folder + "/system").c_str(), 0700);
            return folder;
        }
        if (errno != EEXIST)
            break;
    }
    log.line("files", base::describe(systemFailure(stem + "1", "made", errno)));
    return {};
}

void removeFolder(const std::string& folder)
{
    std::error_code ignored;
    if (!folder.empty())
        std::filesystem::remove_all(folder, ignored);
}

}

HostSystemInfo::HostSystemInfo(platform::FileSystem& files, platform::Diagnostics& log, EndActions& endActions,
                               const Settings& settings)
    : files_(files),
      folder_(makePrivateFolder(settings.tempFolder, log)),
      processorFile_(settings.processorFile),
      windows_(files.programPath(folder_)),
      screen_{settings.screenWidth * 15, settings.screenHeight * 15, 15}
{
    endActions.add([folder = folder_] { removeFolder(folder); });
}

HostSystemInfo::~HostSystemInfo()
{
    removeFolder(folder_);
}

std::wstring HostSystemInfo::installPath()
{
    return std::wstring(files_.folderExists(platform::programFolder) ? platform::programFolder : std::wstring_view());
}

std::wstring HostSystemInfo::processorName()
{
    constexpr std::size_t mostBytes = 4 << 20;
    const Descriptor file(open(processorFile_.c_str(), O_RDONLY | O_CLOEXEC));
    const auto text =
        file ? readToEnd(file.get(), mostBytes, processorFile_) : base::Result<std::string>(std::string());
    if (!text)
        return {};
    const std::size_t label = text->find("model name");
    const std::size_t colon = text->find(':', label);
    const std::size_t end = text->find('\n', label);
    if (label == std::string::npos || colon > end)
        return {};
    return std::wstring(base::trim(base::fromHostBytes(std::string_view(*text).substr(colon + 1, end - colon - 1))));
}

}
