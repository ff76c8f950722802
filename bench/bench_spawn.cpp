#include "host/system/held_files.h"
#include "host/system/host_event_loop.h"
#include "host/system/host_file_system.h"
#include "host/system/host_processes.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// What it costs to start a program and to see its end, through the host and bare.

namespace tonquay::host {
namespace {

using Seconds = std::chrono::duration<double>;

class NoLog final : public platform::Diagnostics {
public:
    void line(std::string_view, std::string_view) override {}
};

/// A program folder in which lame.exe is `true`, started as an encoder is.
struct World {
    World()
    {
        std::filesystem::create_directories(folder);
        std::filesystem::create_symlink("/bin/true", folder / "lame.exe");
    }
    ~World() { std::filesystem::remove_all(folder); }

    bool startAndSeeItsEnd()
    {
        const auto child = processes.start(
            L"C:\\CDTONQUAY\\LAME.EXE -h -b 128 \"C:\\CDTONQUAY\\One Song.wav\" \"C:\\CDTONQUAY\\One Song.mp3\"",
            platform::Processes::WindowStyle::normal);
        if (!child)
            return false;
        std::optional<int> code;
        platform::waitUntil(loop, [&] {
            code = processes.exitCode(*child);
            return code.has_value();
        });
        return *code == 0;
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("tonquay-bench-spawn-" + std::to_string(getpid()));
    HeldFiles held;
    HostFileSystem files{{.root = "/", .programFolder = folder.string(), .discTracks = {}}, held};
    HostEventLoop loop;
    NoLog log;
    EndActions endActions;
    HostProcesses processes{files, loop, log, held, endActions, {(folder / "log").string(), "/usr/bin:/bin"}};
};

bool startBare()
{
    std::string program = "/bin/true";
    char* words[] = {program.data(), nullptr};
    pid_t child = 0;
    int status = 0;
    return posix_spawn(&child, program.c_str(), nullptr, nullptr, words, environ) == 0 &&
           waitpid(child, &status, 0) == child && status == 0;
}

double median(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// Both in turn, so that what else goes on in the machine meets both. The time shown is the host's.
void startAndReap(benchmark::State& state)
{
    World world;
    const std::vector<char> resident(static_cast<std::size_t>(state.range(0)) << 20, 'x');
    benchmark::DoNotOptimize(resident.data());
    std::vector<double> bare;
    std::vector<double> host;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const bool bareEnded = startBare();
        const auto between = std::chrono::steady_clock::now();
        const bool hostEnded = world.startAndSeeItsEnd();
        const auto end = std::chrono::steady_clock::now();
        if (!bareEnded || !hostEnded)
            return state.SkipWithError("cannot start the program");
        bare.push_back(Seconds(between - start).count());
        host.push_back(Seconds(end - between).count());
        state.SetIterationTime(host.back());
    }
    if (bare.empty())
        return;
    const double bareMedian = median(bare);
    const double hostMedian = median(host);
    constexpr double microseconds = 1e6;
    state.counters["bare_us"] = bareMedian * microseconds;
    state.counters["host_us"] = hostMedian * microseconds;
    state.counters["ratio"] = hostMedian / bareMedian;
}
BENCHMARK(startAndReap)->ArgName("resident_MiB")->Arg(0)->Arg(300)->UseManualTime()->Unit(benchmark::kMicrosecond);

}
}
