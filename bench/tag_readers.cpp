// Reads the tags of the files that are named on the standard input, a path a line, in one of three ways:
//
//   tag_readers taglib   a plain loop of TagLib's own file opener: its tag and its sound, printed as fields
//   tag_readers page     the readers of the tag page
//   tag_readers floor    what they need at least: each file opened, its first 4 KiB and last 128 bytes read
//
// The latter two print how many seconds the reading took, that of the list and the rest left out.

#include "host/system/held_files.h"
#include "host/system/host_clock.h"
#include "host/system/host_file_system.h"
#include "tags/file_sight.h"

#include <fileref.h>
#include <tag.h>

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace tonquay;

namespace {

class NoLog final : public platform::Diagnostics {
public:
    void line(std::string_view, std::string_view) override {}
};

class NoSettings final : public platform::SettingsStore {
public:
    std::wstring get(std::wstring_view, std::wstring_view, std::wstring_view fallback) override
    {
        return std::wstring(fallback);
    }
    std::map<std::wstring, std::wstring> all(std::wstring_view) override { return {}; }
    void set(std::wstring_view, std::wstring_view, std::wstring_view) override {}
};

void printSeconds(const std::function<void()>& work)
{
    const auto began = std::chrono::steady_clock::now();
    work();
    std::printf("%.6f\n", std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count());
}

void byTagLib(const std::vector<std::string>& paths)
{
    for (const std::string& path : paths) {
        const TagLib::FileRef file(path.c_str());
        if (file.isNull() || file.tag() == nullptr || file.audioProperties() == nullptr)
            continue;
        const TagLib::Tag& tag = *file.tag();
        const TagLib::AudioProperties& sound = *file.audioProperties();
        std::printf("%s|%s|%s|%s|%u|%s|%s|%u|%d|%d|%d|%d\n", path.c_str(), tag.title().toCString(true),
                    tag.artist().toCString(true), tag.album().toCString(true), tag.year(), tag.genre().toCString(true),
                    tag.comment().toCString(true), tag.track(), sound.bitrate(), sound.sampleRate(), sound.channels(),
                    sound.lengthInMilliseconds());
    }
}

void byPage(const std::vector<std::string>& paths)
{
    host::HeldFiles held;
    host::HostFileSystem files({.root = "/", .programFolder = {}, .discTracks = {}}, held);
    NoLog log;
    NoSettings settings;
    host::HostClock clock;
    tags::COptions options(settings, L"C:\\");
    std::vector<std::wstring> programPaths;
    for (const std::string& path : paths)
        programPaths.push_back(files.programPath(path));
    printSeconds([&] {
        for (const std::wstring& path : programPaths) {
            tags::TagState state;
            if (tags::mp3Sight(files, log, clock, options, state, path).information.empty())
                std::puts("nothing was read");
        }
    });
}

void byFloor(const std::vector<std::string>& paths)
{
    constexpr std::size_t head = 4096;
    constexpr std::size_t block = 128;
    std::vector<char> buffer(head);
    printSeconds([&] {
        for (const std::string& path : paths) {
            const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
            struct stat status {};
            if (file < 0 || fstat(file, &status) != 0)
                continue;
            if (pread(file, buffer.data(), head, 0) < 0 || pread(file, buffer.data(), block, status.st_size - 128) < 0)
                std::puts("nothing was read");
            close(file);
        }
    });
}

}

int main(int count, char** words)
{
    std::vector<std::string> paths;
    for (std::string path; std::getline(std::cin, path);)
        paths.push_back(path);
    const std::string_view way = count > 1 ? words[1] : "";
    if (way == "taglib")
        byTagLib(paths);
    else if (way == "page")
        byPage(paths);
    else if (way == "floor")
        byFloor(paths);
    else
        return 2;
    return 0;
}
