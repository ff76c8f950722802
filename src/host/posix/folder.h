#pragma once

#include <dirent.h>
#include <memory>
#include <string>

namespace tonquay::host {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// A folder that is being listed with readdir(), closed with its owner.
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// Null, with errno set, for one that cannot be listed.
inline OpenFolder openFolder(const std::string& path)
{
    return OpenFolder(opendir(path.c_str()));
}

}
