#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

/// The peer of a rip: copies a file in 1 MiB blocks into a number of files of equal size, and does nothing else.
///
///     plain_copy IMAGE FOLDER FILES
int main(int count, char** arguments)
{
    constexpr std::size_t blockBytes = 1u << 20;
    if (count != 4)
        return 2;
    const int in = open(arguments[1], O_RDONLY | O_CLOEXEC);
    const off_t length = lseek(in, 0, SEEK_END);
    const long files = std::strtol(arguments[3], nullptr, 10);
    if (in < 0 || length <= 0 || files <= 0)
        return 2;
    std::vector<char> block(blockBytes);
    off_t place = 0;
    for (long file = 0; file < files; ++file) {
        const std::string path = std::string(arguments[2]) + '/' + std::to_string(file);
        const int out = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
        const off_t end = length / files * (file + 1);
        while (place < end) {
            const auto wanted = static_cast<std::size_t>(std::min<off_t>(end - place, blockBytes));
            const ssize_t got = pread(in, block.data(), wanted, place);
            if (got <= 0 || write(out, block.data(), static_cast<std::size_t>(got)) != got)
                return 1;
            place += got;
        }
        close(out);
    }
    close(in);
    return 0;
}
