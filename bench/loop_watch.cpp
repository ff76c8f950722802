#include "app/program.h"
#include "disc/handover_file.h"
#include "disc/handover_writer.h"
#include "host/real/real_host.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "state/rip_settings_file.h"
#include "ui/forms/windows.h"
#include "ui/skin/skin.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

using namespace tonquay;
using Millis = std::chrono::duration<double, std::milli>;

namespace {

/// Notes the time between two passes.
class WatchedLoop final : public platform::EventLoop {
public:
    explicit WatchedLoop(platform::EventLoop& real) : real_(real) {}

    void pass() override
    {
        note();
        real_.pass();
        last_ = std::chrono::steady_clock::now();
    }
    void wait(std::chrono::milliseconds limit) override { real_.wait(limit); }
    void post(std::function<void()> call) override { real_.post(std::move(call)); }
    std::unique_ptr<LoopTimer> every(std::chrono::milliseconds interval, std::function<void()> tick) override
    {
        return real_.every(interval, std::move(tick));
    }

    std::vector<double> gaps;

private:
    void note()
    {
        const auto now = std::chrono::steady_clock::now();
        if (last_ != std::chrono::steady_clock::time_point{})
            gaps.push_back(Millis(now - last_).count());
    }

    platform::EventLoop& real_;
    std::chrono::steady_clock::time_point last_{};
};

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// Settings for WAV files in a host folder, and the hand-over of the disc.
bool prepare(const platform::Platform& platform, const platform::DiscTable& table, const char* folder)
{
    state::RipSettings settings;
    settings.outputFolder = platform.files.programPath(folder);
    settings.dirMode = 0;
    settings.nameFormat = 1;
    settings.createProgram = 0;
    settings.encodeWanted = 0;
    settings.encoderPath = L"C:\\lame.exe";
    state::Folders folders;
    folders.appFolder = L"C:\\CDTONQUAY";
    state::writeRipSettings(platform.files, platform.log, folders, settings);
    const auto handOver = disc::makeHandOver(table, L'D');
    return static_cast<bool>(platform.files.writeWhole(L"C:\\CDTONQUAY\\audiocd.dat", handOver.bytes));
}

bool tellGaps(std::vector<double>& gaps)
{
    std::ranges::sort(gaps);
    if (gaps.empty())
        return false;
    const auto part = [&](double fraction) {
        return gaps[static_cast<std::size_t>(fraction * static_cast<double>(gaps.size() - 1))];
    };
    std::printf("passes %zu, gap median %.3f ms, 99 %% %.3f ms, 99.9 %% %.3f ms, longest %.3f ms\n", gaps.size(),
                part(0.5), part(0.99), part(0.999), part(1));
    return true;
}

}

/// Rips an image with the whole program and tells the longest gaps between two passes of the loop; then lies idle on
/// the disc and tells the processor time of it. With "window" the main window shows all that.
///
///     loop_watch IMAGE FOLDER [IDLE-SECONDS [window]]
int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    const int idleSeconds = count > 3 ? std::stoi(arguments[3]) : 10;
    std::unique_ptr<QApplication> application;
    if (count > 4 && std::string(arguments[4]) == "window") {
        application = std::make_unique<QApplication>(count, arguments);
        ui::dressApplication(*application);
    }
    host::DriveSources sources;
    sources.images = {arguments[1]};
    sources.machine = false;
    host::RealHost host(sources);
    if (!host.open({}))
        return 1;
    const platform::Platform real = host.platform();
    WatchedLoop loop(real.loop);
    platform::Platform platform = real.with(loop);
    const auto table = host.discs().read(L'D');
    if (!table)
        return 1;

    if (!prepare(platform, *table, arguments[2]))
        return 1;
    app::Program program(platform);
    const auto windows =
        application ? std::make_unique<ui::Windows>(program.forms(), program.state().theme, platform) : nullptr;
    program.start(L"C:\\CDTONQUAY");
    program.forms().ripdeck().icntla[state::startButton].mouseUp(controls::MouseButton::left);
    if (!tellGaps(loop.gaps))
        return 1;
    const double before = processorSeconds();
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(idleSeconds);
    while (std::chrono::steady_clock::now() < until)
        loop.wait(std::chrono::milliseconds(1000));
    std::printf("idle on a disc: %.1f ms of processor time in %d s\n", (processorSeconds() - before) * 1000,
                idleSeconds);
    return 0;
}
