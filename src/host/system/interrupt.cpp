#include "host/system/interrupt.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

constexpr std::array watched{SIGINT, SIGTERM, SIGHUP};

// What a signal handler may touch: nothing but lock-free numbers.
std::atomic<int> signalDescriptor{-1};
std::atomic<int> signalsSeen{0};

void note(int)
{
    constexpr int endsUnanswered = 4;
    constexpr int endedBySignal = 130;
    if (++signalsSeen >= endsUnanswered)
        _exit(endedBySignal);
    const std::uint64_t one = 1;
    if (write(signalDescriptor, &one, sizeof one) < 0)
        return;
}

void handleAll(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : watched)
        sigaction(signal, &action, nullptr);
}

}

Interrupt::Interrupt(HostEventLoop& loop, std::function<void()> call)
    : signals_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      call_(std::move(call))
{
    signalDescriptor = signals_.get();
    signalsSeen = 0;
    handleAll(note);
    watch_ = loop.watch(signals_.get(), [this] {
        std::uint64_t count = 0;
        if (read(signals_.get(), &count, sizeof count) != sizeof count)
            return;
        for (; count > 0; --count)
            call_();
    });
}

Interrupt::~Interrupt()
{
    handleAll(SIG_DFL);
    signalDescriptor = -1;
}

}
