#include "host/tags/plain_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace tonquay::host {

base::Result<PlainFile> openPlainFile(const std::string& hostPath)
{
    // Without waiting, so that a pipe of that name does not hold us up before it is refused.
    Descriptor file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return systemFailure(hostPath, "opened", errno);
    struct stat found {};
    if (::fstat(file.get(), &found) != 0)
        return systemFailure(hostPath, "read", errno);
    if (S_ISDIR(found.st_mode))
        return base::Failure{base::Failure::Kind::invalid, hostPath, "this is a folder"};
    if (!S_ISREG(found.st_mode))
        return base::Failure{base::Failure::Kind::invalid, hostPath, "this is no plain file"};
    return PlainFile{std::move(file), found.st_size};
}

}
