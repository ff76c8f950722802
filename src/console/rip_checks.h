#pragma once

#include "base/result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What is looked at before the first sector is read, so that a run that cannot end well does not begin. Each problem
/// is one sentence for standard error.
namespace tonquay::console {

/// One file that the run is going to make.
struct PlannedFile {
    int track = 0;             ///< as printed on the sleeve
    std::wstring path{};       ///< in any form, the same for all
    std::int64_t bytes = 0;    ///< its length when it is done
    std::int64_t existing = 0; ///< length of a file that stands there now; its bytes are written over in place
};

/// Two tracks that end in one file: names that differ in case only count as one, since the next track would then be
/// written over the one before. Every track after the first of such a file gets a sentence.
std::vector<std::string> sameFileProblems(const std::vector<PlannedFile>& files);

/// File names, endings included, that are longer than the 255 bytes a file system gives them.
std::vector<std::string> longNameProblems(const std::vector<PlannedFile>& files);

/// Bytes that the run adds to the file system.
std::int64_t bytesToCome(const std::vector<PlannedFile>& files);

/// The same when each file is gone before the next one is begun.
std::int64_t largestToCome(const std::vector<PlannedFile>& files);

/// A sentence when `bytes` do not fit into `free`, else nothing. A little is left for folders and the system.
std::optional<std::string> spaceProblem(const std::string& folder, std::int64_t bytes, std::int64_t free,
                                        std::string_view remedy = "make room or choose another --output");

/// What this user may still write where `folder` is or is going to be. The look goes up to the nearest folder that
/// exists. Fails when none can be looked at.
base::Result<std::int64_t> freeBytes(const std::filesystem::path& folder);

/// Makes `folder` with all that is above it, and tries whether a file can be made in it; leaves nothing but the folder.
base::Status prepareFolder(const std::filesystem::path& folder);

}
