#pragma once

#include "platform/event_loop.h"
#include "support/fake_clock.h"

#include <deque>
#include <map>
#include <mutex>

namespace tonquay::test {

/// Thrown by a fake loop that is asked to wait for longer than any test takes. Not a std::exception, so that nothing
/// but the test catches it.
struct LoopStuck {};

/// A loop on fake time. A pass takes `passTime`; a wait jumps to whatever is due next, at most by its limit. What is
/// due runs in the order of its time, then of its making, so every run is the same.
class FakeEventLoop final : public platform::EventLoop {
public:
    explicit FakeEventLoop(FakeClock& clock) : clock_(clock), start_(clock.elapsed()) {}

    void pass() override;
    void wait(std::chrono::milliseconds limit) override;
    void post(std::function<void()> call) override;
    std::unique_ptr<LoopTimer> every(std::chrono::milliseconds interval, std::function<void()> tick) override;

    /// Runs `call` once, in a pass or wait that far from now: how a test has something happen in the middle.
    void after(std::chrono::nanoseconds time, std::function<void()> call);

    /// Lets fake time go by, with everything that is due run at its time.
    void runFor(std::chrono::milliseconds time);

    std::chrono::nanoseconds passTime = std::chrono::milliseconds{1};

    /// Called in every pass and wait, before anything else; not while it is running already.
    std::function<void()> onTurn;

    /// How much fake time may go by before the loop throws LoopStuck.
    std::chrono::nanoseconds patience = std::chrono::hours{24};

    int passes = 0;
    int waits = 0;

private:
    struct Due {
        std::function<void()> call;
        int timer = 0; ///< 0: once
    };
    struct Ticking {
        std::chrono::nanoseconds interval{};
        std::function<void()> tick;
        bool running = false;
    };
    class Timer;

    void turn();
    void runDue();
    void runPosted();
    std::size_t postedCount();
    void fire(int timer);
    void moveTo(std::chrono::nanoseconds time);

    FakeClock& clock_;
    std::chrono::nanoseconds start_;
    std::multimap<std::chrono::nanoseconds, Due> due_;
    std::map<int, Ticking> timers_;
    int lastTimer_ = 0;
    bool inTurn_ = false;
    std::mutex mutex_;
    std::deque<std::function<void()>> posted_;
};

}
