#pragma once

#include <functional>
#include <string>

namespace tonquay::host {

/// Where this user's things lie, by the XDG base directory rules. Host paths, not made by asking.
struct Places {
    std::string programFolder; ///< $XDG_DATA_HOME/cd-tonquay
    std::string discNames;     ///< $XDG_DATA_HOME/cd-tonquay-discs: names that people have given to discs
    std::string settingsFile;  ///< $XDG_CONFIG_HOME/cd-tonquay/settings
    std::string logFile;       ///< $XDG_STATE_HOME/cd-tonquay/log
    std::string tempFolder;    ///< $TMPDIR, or /tmp when that is unset, relative or holds a blank
};

/// `environment` answers the value of a variable, empty for an unset one. A variable that is no absolute path counts as
/// unset.
Places placesOf(const std::function<std::string(const char*)>& environment);

/// The places of this process.
Places places();

/// Makes a folder with all folders above it, for this user only as the XDG rules ask. False when that cannot be.
bool makeFolders(const std::string& folder);

}
