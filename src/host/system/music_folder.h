#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tonquay::host {

/// The user's folder for music: what user-dirs.dirs names (xdg-user-dirs), else "Music" in the home folder. A host
/// path, not made by asking; empty without a home folder.
std::string musicFolder(const std::function<std::string(const char*)>& environment);
std::string musicFolder();

/// XDG_MUSIC_DIR in the text of a user-dirs.dirs file, with $HOME put in; empty when it names none.
std::string musicFolderIn(std::string_view userDirs, const std::string& home);

}
