#pragma once

#include "controls/handler.h"
#include "platform/event_loop.h"

#include <chrono>
#include <memory>

namespace tonquay::controls {

/// Fires at its interval while it is enabled and bound to a loop.
class Timer {
public:
    explicit Timer(std::chrono::milliseconds interval) : interval_(interval) {}

    Handler<> tick;

    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);

    /// May be called from its own tick.
    void setInterval(std::chrono::milliseconds interval);

    /// Gives it the loop that it runs on. Without one it fires only when a test calls tick.
    void bind(platform::EventLoop& loop);

private:
    void run();

    std::chrono::milliseconds interval_;
    bool enabled_ = false;
    platform::EventLoop* loop_ = nullptr;
    std::unique_ptr<platform::EventLoop::LoopTimer> running_;
};

}
