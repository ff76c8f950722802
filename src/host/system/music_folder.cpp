#include "host/system/music_folder.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace tonquay::host {

std::string musicFolderIn(std::string_view userDirs, const std::string& home)
{
    constexpr std::string_view key = "XDG_MUSIC_DIR=\"";
    constexpr std::string_view homeWord = "$HOME";
    std::string found;
    while (!userDirs.empty()) {
        std::string_view line = userDirs.substr(0, userDirs.find('\n'));
        userDirs.remove_prefix(std::min(line.size() + 1, userDirs.size()));
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (!line.starts_with(key))
            continue;
        line.remove_prefix(key.size());
        std::string folder(line.substr(0, line.find('"')));
        if (folder.starts_with(homeWord))
            folder.replace(0, homeWord.size(), home);
        // The rules allow absolute folders only; the home folder itself stands for "none".
        while (folder.size() > 1 && folder.ends_with('/'))
            folder.pop_back();
        found = folder.starts_with('/') && folder != home ? folder : std::string();
    }
    return found;
}

std::string musicFolder(const std::function<std::string(const char*)>& environment)
{
    const std::string home = environment("HOME");
    if (home.empty())
        return {};
    std::string config = environment("XDG_CONFIG_HOME");
    if (!config.starts_with('/'))
        config = home + "/.config";
    std::ostringstream text;
    if (std::ifstream file(config + "/user-dirs.dirs"); file)
        text << file.rdbuf();
    const std::string named = musicFolderIn(text.str(), home);
    return named.empty() ? home + "/Music" : named;
}

std::string musicFolder()
{
    return musicFolder([](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value ? value : "");
    });
}

}
