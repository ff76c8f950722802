#include "controls/timer.h"

namespace tonquay::controls {

void Timer::setEnabled(bool enabled)
{
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    run();
}

void Timer::setInterval(std::chrono::milliseconds interval)
{
    if (interval == interval_)
        return;
    interval_ = interval;
    run();
}

void Timer::bind(platform::EventLoop& loop)
{
    loop_ = &loop;
    run();
}

void Timer::run()
{
    if (enabled_ && loop_)
        running_ = loop_->every(interval_, [this] { tick(); });
    else
        running_.reset();
}

}
