#include "host/discs/image_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tonquay::host {

namespace {

base::Failure imageFailure(const std::string& path, int error)
{
    using Kind = base::Failure::Kind;
    const Kind kind = error == ENOENT || error == ENOTDIR ? Kind::notFound
                      : error == EACCES || error == EPERM ? Kind::refused
                      : error == EIO                      ? Kind::unreadable
                                                          : Kind::other;
    const std::string text = kind == Kind::notFound ? "there is no such file"
                             : kind == Kind::refused
                                 ? "this file may not be read"
                                 : "this file cannot be read: " + std::generic_category().message(error);
    return {kind, path, text};
}

}

base::Result<ImageFile> ImageFile::openPlain(const std::filesystem::path& path)
{
    const std::string name = path.string();
    // Without waiting, so that a pipe of that name does not hold us up before it is refused.
    Descriptor descriptor(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor)
        return imageFailure(name, errno);
    struct stat found {};
    if (fstat(descriptor.get(), &found) != 0)
        return imageFailure(name, errno);
    if (S_ISDIR(found.st_mode))
        return base::Failure{base::Failure::Kind::invalid, name, "this is a folder"};
    if (!S_ISREG(found.st_mode))
        return base::Failure{base::Failure::Kind::invalid, name, "this is no plain file"};
    ImageFile file(std::move(descriptor), name);
    file.length_ = found.st_size;
    return file;
}

base::Result<ImageFile> ImageFile::open(const std::filesystem::path& path, bool sound)
{
    auto file = openPlain(path);
    if (!file || !sound)
        return file;
    auto decoded = SoundFile::open(file->descriptor_.get(), file->path_);
    if (!decoded)
        return decoded.failure();
    file->length_ = decoded->length();
    file->sound_ = std::move(*decoded);
    return file;
}

std::size_t ImageFile::read(std::int64_t offset, std::span<std::byte> buffer)
{
    if (sound_)
        return sound_->read(offset, buffer);
    return readWhatIsThere(descriptor_.get(), buffer, offset);
}

std::int64_t ImageFile::lengthNow() const
{
    struct stat found {};
    return fstat(descriptor_.get(), &found) == 0 ? found.st_size : 0;
}

bool ImageFile::isStillThere() const
{
    struct stat open {};
    struct stat named {};
    return fstat(descriptor_.get(), &open) == 0 && stat(path_.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
           open.st_dev == named.st_dev;
}

base::Result<std::string> ImageFile::readAll(const std::filesystem::path& path, std::size_t most)
{
    auto file = openPlain(path);
    if (!file)
        return file.failure();
    if (file->length() > static_cast<std::int64_t>(most))
        return base::Failure{base::Failure::Kind::invalid, file->path_, "a sheet is never as large as this"};
    std::string bytes(static_cast<std::size_t>(file->length()), '\0');
    bytes.resize(file->read(0, std::as_writable_bytes(std::span(bytes))));
    return bytes;
}

}
