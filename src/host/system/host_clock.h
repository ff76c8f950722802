#pragma once

#include "platform/clock.h"

#include <thread>

namespace tonquay::host {

/// The time of this machine.
class HostClock final : public platform::Clock {
public:
    Monotonic now() const override { return std::chrono::steady_clock::now(); }
    Wall wallTime() const override { return std::chrono::system_clock::now(); }
    void delay(std::chrono::milliseconds time) override { std::this_thread::sleep_for(time); }
};

}
