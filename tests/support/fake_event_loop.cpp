#include "support/fake_event_loop.h"

#include <algorithm>
#include <utility>

namespace tonquay::test {

class FakeEventLoop::Timer final : public LoopTimer {
public:
    Timer(FakeEventLoop& loop, int id) : loop_(loop), id_(id) {}
    ~Timer() override
    {
        loop_.timers_.erase(id_);
        std::erase_if(loop_.due_, [this](const auto& entry) { return entry.second.timer == id_; });
    }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

private:
    FakeEventLoop& loop_;
    int id_;
};

void FakeEventLoop::pass()
{
    ++passes;
    turn();
    moveTo(clock_.elapsed() + passTime);
    runPosted();
    runDue();
}

void FakeEventLoop::wait(std::chrono::milliseconds limit)
{
    ++waits;
    turn();
    if (postedCount() == 0) {
        std::chrono::nanoseconds until = clock_.elapsed() + std::max(limit, std::chrono::milliseconds{0});
        if (!due_.empty())
            until = std::min(until, due_.begin()->first);
        moveTo(std::max(until, clock_.elapsed()));
    }
    runPosted();
    runDue();
}

void FakeEventLoop::post(std::function<void()> call)
{
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(call));
}

std::unique_ptr<platform::EventLoop::LoopTimer> FakeEventLoop::every(std::chrono::milliseconds interval,
                                                                     std::function<void()> tick)
{
    const int id = ++lastTimer_;
    const auto span = std::max(interval, std::chrono::milliseconds{1});
    timers_[id] = {span, std::move(tick)};
    due_.emplace(clock_.elapsed() + span, Due{nullptr, id});
    return std::make_unique<Timer>(*this, id);
}

void FakeEventLoop::after(std::chrono::nanoseconds time, std::function<void()> call)
{
    due_.emplace(clock_.elapsed() + time, Due{std::move(call), 0});
}

void FakeEventLoop::runFor(std::chrono::milliseconds time)
{
    const auto end = clock_.elapsed() + time;
    runPosted();
    while (!due_.empty() && due_.begin()->first <= end) {
        moveTo(std::max(due_.begin()->first, clock_.elapsed()));
        runDue();
        runPosted();
    }
    moveTo(std::max(end, clock_.elapsed()));
}

void FakeEventLoop::turn()
{
    if (!onTurn || inTurn_)
        return;
    inTurn_ = true;
    onTurn();
    inTurn_ = false;
}

void FakeEventLoop::runDue()
{
    // Only what is due now: a handler that makes something due at once has it run by the next pass.
    const auto now = clock_.elapsed();
    while (!due_.empty() && due_.begin()->first <= now) {
        const Due next = std::move(due_.begin()->second);
        due_.erase(due_.begin());
        if (next.timer != 0)
            fire(next.timer);
        else
            next.call();
    }
}

void FakeEventLoop::runPosted()
{
    // One at a time, so that a call which passes through the loop itself finds the ones behind it.
    for (std::size_t left = postedCount(); left > 0; --left) {
        std::function<void()> call;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty())
                return;
            call = std::move(posted_.front());
            posted_.pop_front();
        }
        call();
    }
}

std::size_t FakeEventLoop::postedCount()
{
    const std::lock_guard lock(mutex_);
    return posted_.size();
}

void FakeEventLoop::fire(int timer)
{
    const auto found = timers_.find(timer);
    if (found == timers_.end())
        return;
    due_.emplace(clock_.elapsed() + found->second.interval, Due{nullptr, timer});
    if (found->second.running)
        return;
    found->second.running = true;
    const auto tick = found->second.tick;
    tick();
    if (const auto still = timers_.find(timer); still != timers_.end())
        still->second.running = false;
}

void FakeEventLoop::moveTo(std::chrono::nanoseconds time)
{
    clock_.advance(time - clock_.elapsed());
    if (clock_.elapsed() - start_ > patience)
        throw LoopStuck{};
}

}
