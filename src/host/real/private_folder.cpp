#include "host/real/private_folder.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <utility>

namespace tonquay::host {

base::Result<PrivateFolder> PrivateFolder::make(const std::string& parent)
{
    constexpr int tries = 100;
    constexpr mode_t ownerOnly = 0700;
    std::random_device random;
    for (int i = 0; i < tries; ++i) {
        std::string path = parent + '/' + std::to_string(random()) + std::to_string(random());
        if (mkdir(path.c_str(), ownerOnly) == 0)
            return PrivateFolder(std::move(path));
        if (errno != EEXIST)
            break;
    }
    return base::Failure{base::Failure::Kind::refused, parent,
                         std::string("no private folder can be made there (") + std::strerror(errno) + ")"};
}

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}

void PrivateFolder::remove()
{
    if (path_.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(std::exchange(path_, {}), ignored);
}

}
