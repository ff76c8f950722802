#pragma once

#include "platform/event_loop.h"

#include <memory>

namespace tonquay::host {

/// The loop on this system: Qt's dispatcher, the same one that windows run on. It makes the application object of a
/// program without windows itself; a program with windows makes its own before this. One for a process, made and
/// destroyed on the logic's thread.
///
/// A call to pass() looks at the dispatcher only when something was posted or a few milliseconds have gone by, so it
/// costs the reading of a clock.
class HostEventLoop final : public platform::EventLoop {
public:
    /// Ends the watching of a descriptor when it goes out of scope.
    class Watch {
    public:
        virtual ~Watch() = default;
    };

    HostEventLoop();
    ~HostEventLoop() override;
    HostEventLoop(const HostEventLoop&) = delete;
    HostEventLoop& operator=(const HostEventLoop&) = delete;

    void pass() override;
    void wait(std::chrono::milliseconds limit) override;
    void post(std::function<void()> call) override;
    std::unique_ptr<LoopTimer> every(std::chrono::milliseconds interval, std::function<void()> tick) override;

    /// Calls `ready` in a pass or wait whenever `descriptor` can be read; a wait ends by it. The descriptor stays the
    /// caller's and outlives the watch.
    std::unique_ptr<Watch> watch(int descriptor, std::function<void()> ready);

private:
    class Core;
    std::unique_ptr<Core> core_;
};

}
