#pragma once

#include "host/posix/descriptor.h"
#include "host/system/host_event_loop.h"

#include <functional>
#include <memory>

namespace tonquay::host {

/// Ctrl-C, and the system's wish that the program end (SIGTERM, SIGHUP), as calls on the logic's thread. One for a
/// process; signals are as usual again when it is gone. The fourth signal ends the process on the spot, whatever became
/// of the first three.
class Interrupt {
public:
    Interrupt(HostEventLoop& loop, std::function<void()> call);
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

private:
    Descriptor signals_;
    std::function<void()> call_;
    std::unique_ptr<HostEventLoop::Watch> watch_;
};

}
