#pragma once

#include "platform/clock.h"

#include <thread>

namespace tonquay::platform {

/// The time of this machine. It needs nothing from a host, so that a room can be used alone.
class MachineClock final : public Clock {
public:
    Monotonic now() const override { return std::chrono::steady_clock::now(); }
    Wall wallTime() const override { return std::chrono::system_clock::now(); }
    void delay(std::chrono::milliseconds time) override { std::this_thread::sleep_for(time); }
};

}
