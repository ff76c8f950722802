#include "host/tags/file_tags.h"
#include "host/tags/id3v2_reader.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The reader takes a file; this one never sees a disk.
    static const int file = ::memfd_create("tags", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    if (::ftruncate(file, 0) != 0 || ::pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        std::abort();
    using tonquay::platform::SoundReading;
    for (const SoundReading reading : {SoundReading::whole, SoundReading::estimate}) {
        const auto tags = tonquay::host::readFileTags(path, reading);
        if (!tags || !std::isfinite(tags->stream.seconds) || tags->stream.seconds < 0 || tags->year < 0 ||
            tags->track < 0)
            std::abort();
    }
    const auto contents = tonquay::host::readId3v2Contents(path);
    if (!contents || contents->frames.size() > 1000 || contents->unreadBytes > size)
        std::abort();
    return 0;
}
