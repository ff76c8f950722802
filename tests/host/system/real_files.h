#pragma once

#include "host/system/host_file_system.h"
#include "support/temp_folder.h"

#include <map>

namespace tonquay::test {

/// The real file system with a temporary folder as C: and, inside it but under another name, the program folder.
struct RealFiles {
    platform::FileSystem& files() { return system; }
    void makeReadOnly(std::wstring_view path)
    {
        std::filesystem::permissions(system.hostPath(path), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::remove);
    }
    void insertDisc(wchar_t letter, int tracks) { discs[letter] = tracks; }

    host::PathMap::Drives drives()
    {
        std::filesystem::create_directories(root / "home/program folder");
        return {root.path(), root / "home/program folder", [this](wchar_t letter) {
                    const auto found = discs.find(letter);
                    return found == discs.end() ? -1 : found->second;
                }};
    }

    TempFolder root;
    std::map<wchar_t, int> discs{{L'D', 0}, {L'E', 0}};
    host::HeldFiles held;
    host::HostFileSystem system{drives(), held};
};

}
