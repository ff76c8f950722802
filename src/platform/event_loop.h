#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tonquay::platform {

/// The one loop of the one thread that all logic runs on.
///
/// Handlers run in the middle of other handlers: whoever calls pass() or wait() must expect that any command, timer
/// or posted call has run when it returns. All calls but post() belong to the logic's thread.
class EventLoop {
public:
    /// A running timer; it ends when this goes out of scope.
    class LoopTimer {
    public:
        virtual ~LoopTimer() = default;
    };

    virtual ~EventLoop() = default;

    /// Runs everything that is due and returns at once; never sleeps. Nearly free when nothing is due, so a working
    /// loop may call it after every block.
    virtual void pass() = 0;

    /// Sleeps until something is due, something is posted or a child process ends, but no longer than `limit`; then
    /// runs what is due. Takes no processor time while it sleeps.
    virtual void wait(std::chrono::milliseconds limit) = 0;

    /// Has `call` run on the logic's thread, in the order of posting. Callable from any thread.
    virtual void post(std::function<void()> call) = 0;

    /// Calls `tick` every `interval`, first after one interval. A timer never re-enters its own handler, and ticks
    /// missed meanwhile become one.
    virtual std::unique_ptr<LoopTimer> every(std::chrono::milliseconds interval, std::function<void()> tick) = 0;
};

/// Waits, with the loop running, until `done` answers true. For loops that only poll; costs no processor while idle.
void waitUntil(EventLoop& loop, const std::function<bool()>& done);

}
