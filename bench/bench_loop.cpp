#include "host/system/held_files.h"
#include "host/system/host_event_loop.h"
#include "host/system/host_file_system.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <vector>

namespace tonquay::host {
namespace {

/// What a working loop pays after each block when nothing is due.
void passWithNothingDue(benchmark::State& state)
{
    HostEventLoop loop;
    const auto timer = loop.every(std::chrono::milliseconds(50), [] {});
    for (auto _ : state)
        loop.pass();
}
BENCHMARK(passWithNothingDue);

/// The blocks that an extraction writes, gathered behind its back. The peer is state.range(0) = 1 MiB.
void writeInBlocks(benchmark::State& state)
{
    constexpr std::int64_t fileBytes = 64 << 20;
    const std::string path = std::filesystem::temp_directory_path() / "tonquay-bench-write";
    HeldFiles held;
    HostFileSystem files({}, held);
    const std::vector<std::byte> block(static_cast<std::size_t>(state.range(0)), std::byte{7});
    for (auto _ : state) {
        auto file = files.openBinary(files.programPath(path));
        for (std::int64_t done = 0; done < fileBytes; done += state.range(0))
            if (!(*file)->write(block))
                return state.SkipWithError("cannot write");
        if (!(*file)->close())
            return state.SkipWithError("cannot close");
    }
    state.SetBytesProcessed(state.iterations() * fileBytes);
    std::filesystem::remove(path);
}
BENCHMARK(writeInBlocks)->Arg(20000)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

}
}
