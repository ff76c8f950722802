#include "host/audio/host_audio_engine.h"

#include <benchmark/benchmark.h>
#include <cstring>

/// What the way through the engine costs a rip, beside the bare copy that it cannot do without.
namespace tonquay::host {
namespace {

constexpr int sectors = 28500; // 67 MB, a track of 6:20
constexpr std::size_t blockBytes = 20000;

class RamDisc : public Disc {
public:
    const std::vector<platform::DiscTrack>& tracks() const override { return tracks_; }
    const platform::DiscNames& names() const override { return names_; }

    Read read(int firstSector, std::span<std::byte> buffer) override
    {
        std::memcpy(buffer.data(), sound_.data() + static_cast<std::size_t>(firstSector) * sectorBytes, buffer.size());
        return {buffer.size() / sectorBytes, ReadEnd::full};
    }

private:
    std::vector<platform::DiscTrack> tracks_{{1, 0, sectors, true}};
    platform::DiscNames names_;
    std::vector<std::byte> sound_ = std::vector<std::byte>(sectors * sectorBytes, std::byte{37});
};

class OneDrive : public DriveSet, public Drive {
public:
    std::size_t count() override { return 1; }
    Drive& at(std::size_t) override { return *this; }
    const platform::DriveDescription& description() override { return about_; }
    bool doorIsOpen() override { return false; }
    bool doorIsLocked() override { return false; }
    std::vector<platform::DiscTrack> tracks() override { return disc_->tracks(); }
    std::shared_ptr<Disc> openDisc() override { return disc_; }
    platform::DiscNames names() override { return {}; }
    bool openDoor() override { return false; }
    bool closeDoor() override { return false; }
    bool lockDoor() override { return false; }
    bool unlockDoor() override { return false; }

private:
    std::shared_ptr<Disc> disc_ = std::make_shared<RamDisc>();
    platform::DriveDescription about_;
};

class NoLoop : public platform::EventLoop {
public:
    void pass() override {}
    void wait(std::chrono::milliseconds) override {}
    void post(std::function<void()>) override {}
    std::unique_ptr<LoopTimer> every(std::chrono::milliseconds, std::function<void()>) override { return nullptr; }
};

class NoLog : public platform::Diagnostics {
public:
    void line(std::string_view, std::string_view) override {}
};

void bareCopy(benchmark::State& state)
{
    OneDrive drive;
    const auto disc = drive.openDisc();
    std::vector<std::byte> run(75 * Disc::sectorBytes);
    for (auto round : state) {
        for (int sector = 0; sector < sectors; sector += 75) {
            benchmark::DoNotOptimize(disc->read(sector, run));
            benchmark::ClobberMemory();
        }
    }
    state.SetBytesProcessed(state.iterations() * sectors * std::int64_t{Disc::sectorBytes});
}
BENCHMARK(bareCopy)->UseRealTime();

/// `range(0)`: ask for the level after every block, as no timer does that often.
void decodeStream(benchmark::State& state)
{
    OneDrive drive;
    NoLoop loop;
    NoLog log;
    HostAudioEngine engine(drive, loop, log);
    engine.BASS_Init(1, 44100, 0, 0, 0);
    std::vector<std::byte> block(blockBytes);
    for (auto round : state) {
        const auto stream = engine.BASS_CD_StreamCreate(0, 0, HostAudioEngine::BASS_STREAM_DECODE);
        while (engine.BASS_ChannelIsActive(stream) != HostAudioEngine::stopped) {
            benchmark::DoNotOptimize(engine.BASS_ChannelGetData(stream, block));
            benchmark::DoNotOptimize(engine.BASS_ChannelGetPosition(stream, 0));
            if (state.range(0) != 0)
                benchmark::DoNotOptimize(engine.BASS_ChannelGetLevel(stream));
        }
        engine.BASS_StreamFree(stream);
    }
    state.SetBytesProcessed(state.iterations() * sectors * std::int64_t{Disc::sectorBytes});
}
BENCHMARK(decodeStream)->Arg(0)->Arg(1)->UseRealTime();

}
}

BENCHMARK_MAIN();
