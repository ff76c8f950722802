#include "host/drives/watch.h"

#include <utility>

namespace tonquay::host {

Watch::Watch(std::function<std::chrono::milliseconds()> look) : look_(std::move(look)) {}

Watch::~Watch()
{
    stop();
}

void Watch::start()
{
    thread_ = std::jthread([this](const std::stop_token& stopping) { run(stopping); });
}

void Watch::stop()
{
    if (!thread_.joinable())
        return;
    thread_.request_stop();
    thread_.join();
}

void Watch::lookSoon()
{
    const std::lock_guard guard(mutex_);
    soon_ = true;
    woken_.notify_all();
}

void Watch::run(const std::stop_token& stopping)
{
    while (!stopping.stop_requested()) {
        const auto rest = look_();
        std::unique_lock guard(mutex_);
        woken_.wait_for(guard, stopping, rest, [this] { return soon_; });
        soon_ = false;
    }
}

}
