#include "host/system/host_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QThread>
#include <QTimerEvent>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <map>
#include <utility>
#include <vector>

namespace tonquay::host {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

namespace {

/// The time of the last tick of the system's clock, a few milliseconds old at most: a sixth of the price of the exact
/// time, and a pass is asked for after every block.
std::chrono::nanoseconds coarseNow()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

/// The only event of the program's own kind.
class PostedCall final : public QEvent {
public:
    explicit PostedCall(std::function<void()> posted) : QEvent(User), call(std::move(posted)) {}

    std::function<void()> call;
};

}

/// Takes what the dispatcher delivers: ticks of timers, posted calls, descriptors that can be read.
class HostEventLoop::Core final : public QObject {
public:
    struct Ticking {
        std::function<void()> tick;
        bool running = false;
    };

    Core()
    {
        if (QCoreApplication::instance() == nullptr)
            application_ = std::make_unique<QCoreApplication>(argumentCount_, arguments_);
    }

    void pass()
    {
        if (!posted_.load(std::memory_order_acquire) && coarseNow() - lastLook_ < lookInterval)
            return;
        lookNow();
    }

    void wait(std::chrono::milliseconds limit)
    {
        if (limit <= 0ms) {
            lookNow();
            return;
        }
        dropRetired();
        posted_.store(false, std::memory_order_release);
        const auto start = SteadyClock::now();
        QEventLoop loop;
        QEventLoop* const outer = std::exchange(waiting_, &loop);
        const auto bounded = std::min(limit, std::chrono::milliseconds{24h});
        const int limitTimer = startTimer(bounded, Qt::PreciseTimer);
        const auto turns = turns_;
        limits_[limitTimer] = &loop;
        loop.exec();
        limits_.erase(limitTimer);
        killTimer(limitTimer);
        waiting_ = outer;
        // Once an application was told to quit, no loop of it sleeps any more. Its wait goes on all the same.
        if (turns == turns_ && SteadyClock::now() - start < std::min(bounded, 1ms)) {
            QThread::msleep(1);
            lookNow();
        }
        lastLook_ = coarseNow();
    }

    void post(std::function<void()> call)
    {
        posted_.store(true, std::memory_order_release);
        // The application owns what is posted, and keeps the order.
        QCoreApplication::postEvent(this, std::make_unique<PostedCall>(std::move(call)).release());
    }

    int startTicking(std::chrono::milliseconds interval, std::function<void()> tick)
    {
        // Slow timers may wait for each other, so that an idle program wakes once for all of them.
        const int id = startTimer(std::max(interval, 1ms), interval < 500ms ? Qt::PreciseTimer : Qt::CoarseTimer);
        timers_[id] = std::make_shared<Ticking>(Ticking{std::move(tick)});
        return id;
    }

    void stopTicking(int id)
    {
        killTimer(id);
        timers_.erase(id);
    }

    const QSocketNotifier* startWatching(int descriptor, std::function<void()> ready)
    {
        auto notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        connect(notifier.get(), &QSocketNotifier::activated, this, [this, ready = std::move(ready)] {
            // A copy, since the handler may end its own watch.
            const auto call = ready;
            ++deliveries_;
            call();
            --deliveries_;
            turned();
        });
        return watches_.emplace_back(std::move(notifier)).get();
    }

    void stopWatching(const QSocketNotifier* notifier)
    {
        const auto found = std::ranges::find(watches_, notifier, &std::unique_ptr<QSocketNotifier>::get);
        if (found == watches_.end())
            return;
        // Perhaps in the middle of its own delivery: silent from now on, and gone when nothing is being delivered.
        (*found)->setEnabled(false);
        (*found)->disconnect();
        retired_.push_back(std::move(*found));
        watches_.erase(found);
    }

    /// Something of the program's has run: whoever waits looks at the world again.
    void turned()
    {
        ++turns_;
        if (waiting_ != nullptr)
            waiting_->quit();
    }

protected:
    void customEvent(QEvent* event) override
    {
        static_cast<PostedCall*>(event)->call();
        turned();
    }

    void timerEvent(QTimerEvent* event) override
    {
        if (const auto limit = limits_.find(event->timerId()); limit != limits_.end()) {
            limit->second->quit();
            return;
        }
        const auto found = timers_.find(event->timerId());
        if (found == timers_.end() || found->second->running)
            return;
        // Kept alive here: the handler may end its own timer.
        const auto timer = found->second;
        timer->running = true;
        timer->tick();
        timer->running = false;
        turned();
    }

private:
    static constexpr std::chrono::nanoseconds lookInterval = 4ms;

    void dropRetired()
    {
        if (deliveries_ == 0)
            retired_.clear();
    }

    void lookNow()
    {
        dropRetired();
        posted_.store(false, std::memory_order_release);
        // A look delivers what one round of the dispatcher finds; a handler of it may have made more due. The bound is
        // for handlers that post themselves anew for ever.
        constexpr int mostRounds = 4;
        for (int round = 0; round < mostRounds; ++round)
            if (!QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
                break;
        lastLook_ = coarseNow();
    }

    int argumentCount_ = 1;
    char name_[11] = "cd-tonquay";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QCoreApplication> application_;

    std::atomic<bool> posted_ = false;
    std::chrono::nanoseconds lastLook_{};
    QEventLoop* waiting_ = nullptr; ///< the innermost wait
    unsigned turns_ = 0;
    std::map<int, std::shared_ptr<Ticking>> timers_;
    std::map<int, QEventLoop*> limits_;
    std::vector<std::unique_ptr<QSocketNotifier>> watches_;
    std::vector<std::unique_ptr<QSocketNotifier>> retired_;
    int deliveries_ = 0; ///< handlers of watches that are running
};

namespace {

/// Ends one timer or one watch with itself.
template <class Base>
class Ending final : public Base {
public:
    explicit Ending(std::function<void()> end) : end_(std::move(end)) {}
    ~Ending() override { end_(); }
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;

private:
    std::function<void()> end_;
};

}

HostEventLoop::HostEventLoop() : core_(std::make_unique<Core>()) {}

HostEventLoop::~HostEventLoop() = default;

void HostEventLoop::pass()
{
    core_->pass();
}

void HostEventLoop::wait(std::chrono::milliseconds limit)
{
    core_->wait(limit);
}

void HostEventLoop::post(std::function<void()> call)
{
    core_->post(std::move(call));
}

std::unique_ptr<platform::EventLoop::LoopTimer> HostEventLoop::every(std::chrono::milliseconds interval,
                                                                     std::function<void()> tick)
{
    const int id = core_->startTicking(interval, std::move(tick));
    return std::make_unique<Ending<LoopTimer>>([core = core_.get(), id] { core->stopTicking(id); });
}

std::unique_ptr<HostEventLoop::Watch> HostEventLoop::watch(int descriptor, std::function<void()> ready)
{
    const QSocketNotifier* const notifier = core_->startWatching(descriptor, std::move(ready));
    return std::make_unique<Ending<Watch>>([core = core_.get(), notifier] { core->stopWatching(notifier); });
}

}
