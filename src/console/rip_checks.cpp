#include "console/rip_checks.h"

#include "base/text.h"
#include "console/screen_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <map>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace tonquay::console {

namespace {

base::Failure folderFailure(const std::filesystem::path& folder, std::string_view what, const std::error_code& error)
{
    using Kind = base::Failure::Kind;
    const Kind kind = error == std::errc::no_space_on_device ? Kind::full : Kind::refused;
    return {kind, folder.string(), fmt::format("the output folder {}: {}", what, error.message())};
}

std::wstring_view fileName(std::wstring_view path)
{
    return path.substr(path.find_last_of(L"/\\") + 1);
}

}

std::vector<std::string> sameFileProblems(const std::vector<PlannedFile>& files)
{
    std::vector<std::string> problems;
    std::map<std::wstring, int> owners;
    for (const PlannedFile& file : files) {
        const auto [owner, isNew] = owners.emplace(base::upper(file.path), file.track);
        if (!isNew)
            problems.push_back(fmt::format("track {}: ends in the same file as track {}, {}; choose other --names or "
                                           "give a --title",
                                           file.track, owner->second, shown(fileName(file.path))));
    }
    return problems;
}

std::vector<std::string> longNameProblems(const std::vector<PlannedFile>& files)
{
    constexpr std::size_t longest = 255;
    std::vector<std::string> problems;
    for (const PlannedFile& file : files) {
        const std::size_t bytes = base::utf8(fileName(file.path)).size();
        if (bytes > longest)
            problems.push_back(fmt::format("track {}: its file name has {} bytes, more than the {} that fit; choose "
                                           "other --names or give a shorter --title",
                                           file.track, bytes, longest));
    }
    return problems;
}

std::int64_t bytesToCome(const std::vector<PlannedFile>& files)
{
    std::int64_t bytes = 0;
    for (const PlannedFile& file : files)
        bytes += std::max<std::int64_t>(0, file.bytes - file.existing);
    return bytes;
}

std::int64_t largestToCome(const std::vector<PlannedFile>& files)
{
    std::int64_t bytes = 0;
    for (const PlannedFile& file : files)
        bytes = std::max(bytes, file.bytes - file.existing);
    return bytes;
}

std::optional<std::string> spaceProblem(const std::string& folder, std::int64_t bytes, std::int64_t free,
                                        std::string_view remedy)
{
    constexpr std::int64_t reserve = 1 << 16;
    constexpr std::int64_t mebibyte = 1 << 20;
    if (bytes <= 0 || bytes <= free - reserve)
        return std::nullopt;
    return fmt::format("{}: {} MB are needed and {} MB are free; {}", shownBytes(folder), bytes / mebibyte + 1,
                       std::max<std::int64_t>(0, free) / mebibyte, remedy);
}

base::Result<std::int64_t> freeBytes(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::path place = std::filesystem::absolute(folder, error);
    while (!error) {
        const std::filesystem::space_info space = std::filesystem::space(place, error);
        if (!error) {
            const auto most = static_cast<std::uintmax_t>(std::numeric_limits<std::int64_t>::max());
            return static_cast<std::int64_t>(std::min(space.available, most));
        }
        if (error != std::errc::no_such_file_or_directory || place == place.parent_path())
            break;
        error.clear();
        place = place.parent_path();
    }
    return folderFailure(folder, "cannot be looked at", error);
}

base::Status prepareFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    // An existing name that is no folder is no error of the call above.
    if (!error && !std::filesystem::is_directory(folder, error))
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        return folderFailure(folder, "cannot be made", error);

    // Only trying tells: rights, read-only mounts and quotas each have a say.
    std::string trial = (folder / ".tonquay-XXXXXX").string();
    const int descriptor = ::mkostemp(trial.data(), O_CLOEXEC);
    if (descriptor < 0)
        return folderFailure(folder, "cannot be written", {errno, std::generic_category()});
    ::close(descriptor);
    ::unlink(trial.c_str());
    return {};
}

}
