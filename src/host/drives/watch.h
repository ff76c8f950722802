#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace tonquay::host {

/// A thread that looks at something again and again. `look` runs on it and returns how long it is to rest.
class Watch {
public:
    /// Call start() when what `look` touches is complete.
    explicit Watch(std::function<std::chrono::milliseconds()> look);

    /// Waits for a look under way.
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    void start();
    void stop();
    void lookSoon(); ///< ends the rest at once

private:
    void run(const std::stop_token& stopping);

    std::function<std::chrono::milliseconds()> look_;
    std::mutex mutex_;
    std::condition_variable_any woken_;
    bool soon_ = false;
    std::jthread thread_;
};

}
