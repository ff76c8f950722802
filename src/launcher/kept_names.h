#pragma once

#include "platform/diagnostics.h"
#include "platform/discs.h"
#include "platform/file_system.h"

#include <optional>
#include <string>
#include <string_view>

namespace tonquay::launcher {

/// The names that a person has given to discs, one JSON file for each layout of tracks, so that they come back with the
/// disc.
class KeptNames {
public:
    /// `folder` is where the files lie, in the program's form; it is there already.
    KeptNames(platform::FileSystem& files, platform::Diagnostics& log, std::wstring folder);

    /// Nothing for a disc without kept names. A file that cannot be read, or that holds something else, leaves a line
    /// and counts as none.
    std::optional<platform::DiscNames> find(std::string_view discId) const;

    base::Status keep(std::string_view discId, const platform::DiscNames& names);

private:
    std::wstring pathOf(std::string_view discId) const;

    platform::FileSystem& files_;
    platform::Diagnostics& log_;
    std::wstring folder_;
};

}
