#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace tonquay::host {

/// What has to be put right before the process ends on the spot: doors to unlock, a terminal to restore, a private
/// folder to remove. Nothing else runs then, no destructor either. To be filled and run on the logic's thread.
class EndActions {
public:
    /// Each action is short, waits for nobody and holds for an object that may be half-way through its work.
    void add(std::function<void()> action) { actions_.push_back(std::move(action)); }

    /// Runs them once, the youngest first.
    void run()
    {
        while (!actions_.empty()) {
            const auto action = std::move(actions_.back());
            actions_.pop_back();
            action();
        }
    }

private:
    std::vector<std::function<void()>> actions_;
};

}
